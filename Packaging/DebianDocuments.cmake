# Run by CPack over the files to be packed: the documents that Debian asks for, where and as
# it asks for them.
cmake_minimum_required(VERSION 3.22)

file(READ ${CMAKE_CURRENT_LIST_DIR}/../LICENSE license)
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REGEX REPLACE "\n(.)" "\n \\1" license "${license}")
set(copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: OpenGLRenderer

Files: *
Copyright: 2026 The OpenGLRenderer authors
License: Expat
 ${license}")

set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "sgview (${version}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}; changelog.gz tells what is new.

 -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}
")

foreach(package Runtime:sgview Development:sgview-dev)
    string(REPLACE ":" ";" package ${package})
    list(GET package 0 component)
    list(GET package 1 name)
    set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share)
    set(documents ${share}/doc/${name})
    file(RENAME ${share}/doc/OpenGLRenderer ${documents})
    file(REMOVE ${documents}/LICENSE ${documents}/CHANGELOG.md)
    file(WRITE ${documents}/copyright "${copyright}")
    file(WRITE ${documents}/changelog.Debian "${changelog}")
    file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/../CHANGELOG.md ${documents}/changelog)
    file(GLOB_RECURSE manuals ${share}/man/*.[1-8])
    set(compressed ${documents}/changelog ${documents}/changelog.Debian ${manuals})
    file(CHMOD ${documents}/copyright ${compressed} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    execute_process(COMMAND gzip -9n ${compressed} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/Runtime${CPACK_PACKAGING_INSTALL_PREFIX}/share/lintian/overrides/sgview
"# The maths calls nothing of libc.
sgview: library-not-linked-against-libc *libSGMaths.so*
# The libraries come with the program they are for.
sgview: package-name-doesnt-match-sonames *
")
