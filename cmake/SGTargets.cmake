# What every target of the project shares: warnings, sanitizers, coverage, include path.

add_library(sg_options INTERFACE)
target_compile_features(sg_options INTERFACE cxx_std_20)
target_include_directories(sg_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(sg_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
    # GCC 12 sees overlapping copies in its own std::string (GCC bug 105651).
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    # No installed file names the folder it was built from.
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=
    # GCC's unique symbols keep a module mapped after it is closed.
    $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
    $<$<BOOL:${SG_STRICT}>:-Werror>
    $<$<BOOL:${SG_COVERAGE}>:--coverage>)
target_link_options(sg_options INTERFACE $<$<BOOL:${SG_COVERAGE}>:--coverage>)
if(SG_SANITIZER)
    target_compile_options(sg_options INTERFACE
        -fsanitize=${SG_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(sg_options INTERFACE -fsanitize=${SG_SANITIZER})
endif()

# sg_add_library(NAME sources...): one of the engine's shared libraries, lib/libSG<NAME>.so, alias SG::NAME.
function(sg_add_library name)
    add_library(${name} SHARED ${ARGN})
    add_library(SG::${name} ALIAS ${name})
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME SG${name} SOVERSION 0 VERSION ${PROJECT_VERSION} INSTALL_RPATH "$ORIGIN")
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    target_link_libraries(${name} PRIVATE sg_options)
endfunction()
