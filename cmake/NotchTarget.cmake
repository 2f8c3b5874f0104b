# How this project's targets are made: one standard, one set of warnings, one set of sanitizers.

find_package(Threads REQUIRED)

function(notch_compile_options target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
        -Wno-missing-field-initializers # Designated initialisers leave defaults on purpose.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>) # GCC 12 misreads a literal plus a string as an overlap (its bug 105651).
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections) # For --gc-sections.
    if(NOTCH_SANITIZERS)
        target_compile_options(${target} PUBLIC
            -fsanitize=${NOTCH_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${NOTCH_SANITIZERS})
    endif()
endfunction()

# Sources name all that they use, and the release build proves it. The other builds save the time of
# reading the same headers again and again.
function(notch_precompile target)
    if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# notch_library(Name SOURCES a.cpp … [DEPENDS Foundation …])
# A static library from one folder. Includes are written from the unit's root: "Bridge/HookClient.h".
function(notch_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    notch_compile_options(${name})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/..)
    target_link_libraries(${name} PUBLIC ${arg_DEPENDS})
endfunction()

# For programs that the host starts and waits for, whose time goes into mapping and relocating
# pages: no shared object but libc, no unused code, every symbol bound in one pass.
# The sanitizers' runtimes need the shared C++ library.
function(notch_link_for_fast_start target)
    if(NOT NOTCH_SANITIZERS)
        target_link_options(${target} PRIVATE
            -static-libstdc++ -static-libgcc -Wl,--as-needed -Wl,--gc-sections
            -Wl,--exclude-libs,ALL -Wl,-z,now)
    endif()
endfunction()

# All test programs that the thread sanitizer's run needs.
add_custom_target(ThreadTests)

# notch_test(Name SOURCES aTest.cpp … DEPENDS Library … [THREADS] [RESOURCE_LOCK lock])
# A test program of one folder, each of its tests known to CTest. THREADS marks it for the thread
# sanitizer's run.
function(notch_test name)
    cmake_parse_arguments(arg "THREADS" "RESOURCE_LOCK" "SOURCES;DEPENDS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    notch_compile_options(${name})
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} TestSupport GTest::gmock GTest::gtest_main)
    notch_precompile(${name} <gtest/gtest.h> <functional> <map> <memory> <optional> <string> <vector>)
    set(properties TIMEOUT 120)
    if(arg_THREADS)
        list(APPEND properties LABELS threads)
        add_dependencies(ThreadTests ${name})
    endif()
    if(arg_RESOURCE_LOCK)
        list(APPEND properties RESOURCE_LOCK ${arg_RESOURCE_LOCK})
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
