# What every target is built with, as the INTERFACE target `project_settings`, and how a program of
# the product is made.
add_library(project_settings INTERFACE)
target_compile_features(project_settings INTERFACE cxx_std_20)
target_include_directories(project_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(project_settings INTERFACE _FILE_OFFSET_BITS=64)
target_compile_options(project_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wmissing-declarations
  -Wnull-dereference -Wformat=2
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
  -ffunction-sections -fdata-sections)
target_link_options(project_settings INTERFACE -Wl,--gc-sections -Wl,--as-needed)

option(QUARNFOLD_HARDENED "Harden the programs: fortify, stack protector, PIE, full RELRO" ON)
if(QUARNFOLD_HARDENED)
  target_compile_options(project_settings INTERFACE
    -fPIE -fstack-protector-strong $<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2>)
  target_link_options(project_settings INTERFACE -pie -Wl,-z,relro,-z,now)
endif()

option(QUARNFOLD_STATIC_RUNTIME "Link libstdc++ and libgcc statically into the programs" ON)

# The build tree is a product tree already.
set(PRODUCT_DIR ${PROJECT_BINARY_DIR}/product)

# A program of the product tree, in its bin folder in the build tree as in an installation.
function(add_product_program name)
  add_executable(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PRODUCT_DIR}/bin)
  target_link_libraries(${name} PRIVATE project_settings)
  if(QUARNFOLD_STATIC_RUNTIME)
    target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc)
  endif()
  install(TARGETS ${name} RUNTIME DESTINATION bin)
endfunction()
