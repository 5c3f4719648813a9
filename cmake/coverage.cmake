# Line coverage by gcc. A program that ends by _exit writes no counts, so _exit is wrapped.
add_library(coverage_exit OBJECT ${PROJECT_SOURCE_DIR}/cmake/coverage_exit.c)
target_compile_options(project_settings INTERFACE --coverage)
target_link_options(project_settings INTERFACE --coverage -Wl,--wrap=_exit)
target_link_libraries(project_settings INTERFACE $<TARGET_OBJECTS:coverage_exit>)
