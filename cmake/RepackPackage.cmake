# Run by CPack on the package that it has made. Its maintainer scripts call ldconfig for a library that
# only this program loads, and its archive keeps the times at which files were built.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(tree ${package}.tree)
    file(REMOVE_RECURSE ${tree})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
    if(CPACK_SOURCE_DATE_EPOCH)
        set(ENV{SOURCE_DATE_EPOCH} ${CPACK_SOURCE_DATE_EPOCH})
        execute_process(COMMAND find ${tree} -exec
            touch --no-dereference --date=@${CPACK_SOURCE_DATE_EPOCH} {} + COMMAND_ERROR_IS_FATAL ANY)
    endif()
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${tree} ${package}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE ${tree})
endforeach()
