# The two helpers by which every folder declares its library and its tests.

set(KTQDDE_WARNINGS
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wcast-qual;-Wformat=2;-Wimplicit-fallthrough>
    $<$<CXX_COMPILER_ID:MSVC>:/W4;/utf-8;/permissive-;/Zc:__cplusplus>)
if(KTQDDE_WERROR)
    list(APPEND KTQDDE_WARNINGS
         $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Werror>
         $<$<CXX_COMPILER_ID:MSVC>:/WX>)
endif()

function(ktqdde_compile_settings target)
    target_compile_options(${target} PRIVATE ${KTQDDE_WARNINGS})
    if(CMAKE_UNITY_BUILD)
        # There a source is included by another file, which is no reason to take its classes for those of a header.
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_DEPRECATED_WARNINGS KTQDDE_BUILD)
endfunction()

# ktqdde_library(NAME SOURCES file... LINKS library...)
# One static library per folder. Headers are included as "folder/Name.h" from src/ (or from the
# repository root for embedded/). LINKS are public: a layer passes on what it stands on.
function(ktqdde_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    add_library(ktqdde_${name} STATIC ${ARG_SOURCES})
    add_library(KtQdDe::${name} ALIAS ktqdde_${name})
    target_include_directories(ktqdde_${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    target_link_libraries(ktqdde_${name} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
    ktqdde_compile_settings(ktqdde_${name})
    set_property(GLOBAL APPEND PROPERTY KTQDDE_LIBRARIES ktqdde_${name})
endfunction()

# The code of tests is neither timed nor shipped: it is compiled without optimization in every build, with the
# headers that all tests include compiled once, and without the checks for undefined behaviour, which double the data of an
# object. What they test keeps the build's own settings.
function(ktqdde_test_settings target)
    ktqdde_compile_settings(${target})
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-O0;-fno-sanitize=undefined> $<$<CXX_COMPILER_ID:MSVC>:/Od>)
endfunction()

# How long a test program may take, in seconds: far longer than a working one does on a tenth of a busy machine, so that
# only one that hangs is ended.
set(KTQDDE_TEST_LIMIT 7200 CACHE STRING "Seconds after which a test program is ended")

# ktqdde_test(NAME LABEL label [SHARDS count] SOURCES file... LINKS library...)
# One GoogleTest program, run as `count` parts that may run side by side: every test works in a temporary folder of its
# own. A process for every test would take longer to start than most tests to run; KTQDDE_TESTS_APART asks for it, to
# see whether a test leans on another one.
function(ktqdde_test name)
    cmake_parse_arguments(ARG "" "LABEL;SHARDS" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} KtQdDe::test_support GTest::gmock)
    ktqdde_test_settings(${name})
    target_precompile_headers(${name} REUSE_FROM ktqdde_test_headers)
    if(KTQDDE_TESTS_APART)
        gtest_discover_tests(${name} PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${KTQDDE_TEST_LIMIT} DISCOVERY_TIMEOUT 600
            DISCOVERY_MODE PRE_TEST)
        return()
    endif()
    if(NOT ARG_SHARDS)
        set(ARG_SHARDS 1)
    endif()
    math(EXPR last "${ARG_SHARDS} - 1")
    foreach(shard RANGE ${last})
        add_test(NAME ${name}.${shard} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name}.${shard} PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${KTQDDE_TEST_LIMIT} COST ${ARG_SHARDS}
            ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${shard}")
    endforeach()
endfunction()
