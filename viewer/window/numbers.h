/*
 * Numbers as the user's language writes them.
 */
#pragma once

#include <QLocale>
#include <QString>
#include <cstddef>

inline QString grouped(std::size_t number)
{
    return QLocale().toString(qulonglong{number});
}
