# Run by CPack over the finished packages. It adds scripts that call ldconfig, which the packages' trigger does already,
# once for all packages of an upgrade.
cmake_minimum_required(VERSION 3.22)

set(contents ${CPACK_TEMPORARY_DIRECTORY}/repacked)
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    file(REMOVE_RECURSE ${contents})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${contents} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${contents}/DEBIAN/postinst ${contents}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group --build ${contents} ${package}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
