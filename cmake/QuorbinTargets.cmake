# Options every target of the project shares, set per target rather than globally.
function(quorbin_target_options target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
    if(QUORBIN_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
            -fno-sanitize-recover=undefined)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
    if(QUORBIN_FUZZ)
        # Coverage for libFuzzer in every library; the test programs of the same build link the
        # sanitizers' runtime, which answers the coverage calls, so one build serves both.
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()

# A library of the project: quorbin_library(name SOURCES ... LIBS ...)
function(quorbin_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LIBS})
    quorbin_target_options(${name})
endfunction()

# One test program per source folder: quorbin_test(name [WIDGETS] SOURCES ... LIBS ...).
# WIDGETS gives the program a QApplication (window tests); otherwise a QGuiApplication.
function(quorbin_test name)
    cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    if(ARG_WIDGETS)
        set(main test_main_widgets)
    else()
        set(main test_main_gui)
    endif()
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} ${main} GTest::gtest GTest::gmock)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE
        QUORBIN_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
    quorbin_target_options(${name})
    # Parameterised cases carry their own names; their values printed as bytes
    # would only clutter the test names.
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES
        PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# A libFuzzer target: quorbin_fuzzer(name SOURCES ... LIBS ...); seeds in tests/fuzz/corpus/<name>
function(quorbin_fuzzer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(fuzz_${name} ${ARG_SOURCES})
    target_link_libraries(fuzz_${name} PRIVATE ${ARG_LIBS})
    quorbin_target_options(fuzz_${name})
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
endfunction()
