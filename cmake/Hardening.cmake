# What a release build does against faults of its own, and against knowing where it was built.
# tools/check-package looks for all of it in the built files.

include(CheckPIESupported)
check_pie_supported()

if(CMAKE_BUILD_TYPE STREQUAL "Release")
    add_compile_options(
        -fstack-protector-strong -fstack-clash-protection -fcf-protection=full
        -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
    add_compile_definitions(_FORTIFY_SOURCE=2)
    add_link_options(-Wl,-z,relro -Wl,-z,now)
endif()
