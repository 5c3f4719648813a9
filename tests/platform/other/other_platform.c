/*
 * Another platform library with the same C interfaces, and with behaviour that a test recognises.
 * All its directories are what OTHER_PLATFORM_FOLDER names.
 */
#include "platform/fileutl.h"
#include "platform/imsg.h"
#include "platform/ks.h"
#include "platform/pfm.h"
#include "platform/sysutl.h"

#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

static const char* app_name = "nobody";

static const char* folder(void)
{
    const char* named = getenv("OTHER_PLATFORM_FOLDER");
    return named != NULL ? named : "";
}

void ks_system_init(void)
{
    fputs("other ks_system_init\n", stderr);
}

char* ks_product_dir(char* buffer, int reserved)
{
    snprintf(buffer, 4096, "%s/product", folder());
    return reserved == 0 ? buffer : NULL;
}

int fileutl_get_tmpdir(int kind, char* buffer, int size, int options)
{
    snprintf(buffer, (size_t)size, "%s", folder());
    return kind + options;
}

const char* sysutl_myloginname(void)
{
    return "other_user";
}

void pfm_exit(int status)
{
    _exit(status);
}

void imsg_set_app_name(char* name)
{
    app_name = name;
}

int imsg_print(int kind, const void* source, int position, ...)
{
    const struct imsg_table* table = source;
    return fprintf(stderr, "%s: other %d %s_%d: %s\n", app_name, kind, table->short_prefix,
                   table->catalogue_numbers[position], table->texts[position]);
}

int imsg_sprintf(char* buffer, const char* format, int position, ...)
{
    buffer[0] = format[0];
    return position;
}

int imsg_redirect_output(imsg_output_callback out_callback, void* out_context,
                         imsg_output_callback err_callback, void* err_context)
{
    return out_callback == err_callback && out_context == err_context;
}
