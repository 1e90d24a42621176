# How this project declares its tests.

# ktz_run(name COMMAND program [argument...] [GUI] [LABELS label...] [ENVIRONMENT variable=value...]): has ctest run a
# program under a watchdog, which tells where it hangs before ctest's own limit ends it. GUI programs get a display of
# their own, so that they send real events to real windows and may run side by side. The first label is gui or core.
function(ktz_run name)
    cmake_parse_arguments(ARG "GUI" "" "COMMAND;LABELS;ENVIRONMENT" ${ARGN})
    set(support ${PROJECT_SOURCE_DIR}/tests/support)
    if(ARG_GUI)
        set(labels gui ${ARG_LABELS})
        set(display ${support}/with-display)
    else()
        set(labels core ${ARG_LABELS})
        set(display)
    endif()
    add_test(NAME ${name} COMMAND ${display} ${support}/watchdog 240 ${ARG_COMMAND})
    set_tests_properties(${name} PROPERTIES
        LABELS "${labels}" ENVIRONMENT "${ARG_ENVIRONMENT}" TIMEOUT 300)
endfunction()

# What the tests with the labels core and threads run: a build with ThreadSanitizer needs nothing else.
add_custom_target(threading_tests)

# ktz_brings_widgets(result library...): whether one of the libraries, or what it uses, brings Qt's widgets.
function(ktz_brings_widgets result)
    set(found FALSE)
    foreach(library ${ARGN})
        set(uses)
        if(TARGET ${library})
            get_target_property(uses ${library} INTERFACE_LINK_LIBRARIES)
        endif()
        if(NOT found AND uses)
            ktz_brings_widgets(found ${uses})
        endif()
        if(library STREQUAL "Qt6::Widgets")
            set(found TRUE)
        endif()
    endforeach()
    set(${result} ${found} PARENT_SCOPE)
endfunction()

# ktz_test(name SOURCES file... USES library... [GUI] [LABELS label...]): a Qt Test program, run by ctest.
function(ktz_test name)
    cmake_parse_arguments(ARG "GUI" "" "SOURCES;USES;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ktz_options ktz_test_support ${ARG_USES} Qt6::Test)
    # The folders that Qt Test tells each test would keep them from sharing headers.
    target_compile_options(${name} PRIVATE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
    ktz_brings_widgets(widgets ${ARG_USES})
    if(widgets)
        target_precompile_headers(${name} REUSE_FROM ktz_test_headers_gui)
    else()
        target_precompile_headers(${name} REUSE_FROM ktz_test_headers)
    endif()
    if(ARG_GUI)
        set(gui GUI)
    endif()
    if(NOT ARG_GUI OR threads IN_LIST ARG_LABELS)
        add_dependencies(threading_tests ${name})
    endif()
    ktz_run(${name} COMMAND $<TARGET_FILE:${name}> ${gui} LABELS ${ARG_LABELS})
endfunction()
