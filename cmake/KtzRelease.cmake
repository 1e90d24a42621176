# What the changelog says of the version that is being built.
#
#   KTZ_EPOCH  its day, in seconds since 1970: the only time that packages, manual pages and documents carry
#   KTZ_DATE   the same as YYYY-MM-DD

# ktz_changelog(result form [word...]): a form of packaging/changelog.py.
function(ktz_changelog result)
    execute_process(
        COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/packaging/changelog.py
                ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_VERSION} ${ARGN}
        OUTPUT_VARIABLE text OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/packaging/changelog.py)
ktz_changelog(KTZ_EPOCH epoch)
set(ENV{SOURCE_DATE_EPOCH} ${KTZ_EPOCH})
string(TIMESTAMP KTZ_DATE "%Y-%m-%d" UTC)
unset(ENV{SOURCE_DATE_EPOCH})

# ktz_gzip(file): makes file.gz of a file in the build's folder, the same bytes each time.
function(ktz_gzip file)
    cmake_path(GET file FILENAME name)
    add_custom_command(OUTPUT ${file}.gz COMMAND gzip -9 -n -c ${file} > ${file}.gz DEPENDS ${file} VERBATIM)
    add_custom_target(${name}.gz ALL DEPENDS ${file}.gz)
endfunction()

# ktz_man_page(file): has `cmake --install` install a manual page; @PROJECT_VERSION@ and @KTZ_DATE@ in it are replaced.
function(ktz_man_page file)
    cmake_path(GET file FILENAME name)
    string(REGEX REPLACE ".*\\." "" section ${name})
    set(page ${PROJECT_BINARY_DIR}/man/${name})
    configure_file(${file} ${page} @ONLY)
    ktz_gzip(${page})
    install(FILES ${page}.gz DESTINATION share/man/man${section})
endfunction()
