# The Debian package: `cpack --config build/release/CPackConfig.cmake`, or `./run --package`. Two builds
# of one commit give the same bytes: its time is the commit's, or SOURCE_DATE_EPOCH where that is set.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        OUTPUT_VARIABLE commit_time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(commit_time)
        set(ENV{SOURCE_DATE_EPOCH} ${commit_time})
    endif()
endif()
set(CPACK_SOURCE_DATE_EPOCH $ENV{SOURCE_DATE_EPOCH}) # For the script that makes the archive.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillmoss-notch)
set(CPACK_PACKAGE_VENDOR "QuillMossNotch contributors")
set(CPACK_PACKAGE_CONTACT "QuillMossNotch contributors <quillmoss-notch@packages.debian.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "answers QuillMoss permission requests at the top of the screen")
set(CPACK_PACKAGE_DESCRIPTION
    "QuillMossNotch keeps a small black notch at the top edge of the screen and
opens it when the desktop agent QuillMoss asks for a permission. It shows the
whole request; a person allows it once, denies it, or goes to QuillMoss.
.
It never decides by itself: a request that nobody answers goes back to
QuillMoss. Everything stays on this machine; there is no network access and
no log.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk, at-spi2-core")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/Resources/package/prerm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/cmake/RepackPackage.cmake)
# Whatever the umask of the one who builds: 0755 for directories that the files imply.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# notch_install_compressed(source destination name): as Debian wants manual pages and changelogs,
# without the time and the name that gzip would store.
function(notch_install_compressed source destination name)
    set(compressed ${CMAKE_CURRENT_BINARY_DIR}/package/${name})
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/package
        COMMAND sh -c "gzip --best --no-name --stdout '${source}' >'${compressed}'"
        DEPENDS ${source} VERBATIM)
    add_custom_target(package-${name} ALL DEPENDS ${compressed})
    add_dependencies(NotchProgram package-${name})
    install(FILES ${compressed} DESTINATION ${destination})
endfunction()

string(TIMESTAMP package_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(Resources/package/changelog.Debian.in package/changelog.Debian @ONLY)

set(package_docs ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_PACKAGE_NAME})
notch_install_compressed(${CMAKE_CURRENT_SOURCE_DIR}/Resources/QuillMossNotch.1
    ${CMAKE_INSTALL_MANDIR}/man1 QuillMossNotch.1.gz)
notch_install_compressed(${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md ${package_docs} changelog.gz)
notch_install_compressed(${CMAKE_CURRENT_BINARY_DIR}/package/changelog.Debian
    ${package_docs} changelog.Debian.gz)
install(FILES Resources/package/copyright docs/configure.md docs/turn-end.md
    DESTINATION ${package_docs})
install(FILES Resources/package/lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${CPACK_PACKAGE_NAME})

include(CPack)
