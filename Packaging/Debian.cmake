# Two Debian packages: sgview draws, sgview-dev builds hosts. Scripts/package makes them as Debian lays files out; a
# build for another prefix gives packages that work, with libraries outside Debian's folder of the architecture.
set(SG_MAINTAINER "The OpenGLRenderer authors <authors@openglrenderer.invalid>" CACHE STRING
    "Whom Debian packages name as their maintainer")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sgview)
set(CPACK_PACKAGE_VENDOR "The OpenGLRenderer authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer of 3D models")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/DebianDocuments.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/DebianScripts.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${SG_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_COMPRESSION_TYPE gzip) # packed once more, and better, at the end
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME sgview)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
"sgview opens 3D model files, plays their animations and draws them into
pictures, with or without a screen, by the fixed-function OpenGL pipeline:
on old and embedded cards, in virtual machines and on servers.

The renderer and the scene graph are libraries that other programs can use.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/shlibs "")
foreach(library Maths Utilities SceneGraph)
    get_target_property(soversion ${library} SOVERSION)
    file(APPEND ${CMAKE_CURRENT_BINARY_DIR}/shlibs "libSG${library} ${soversion} sgview (>= ${PROJECT_VERSION})\n")
endforeach()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/triggers ${CMAKE_CURRENT_BINARY_DIR}/shlibs)
# Loaded at run time, so that no library dependency shows them.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libegl1, libgl1, libopengl0")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "libdecor-0-plugin-1-cairo, libgl1-mesa-dri")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME sgview-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"Headers, CMake and pkg-config files, documents and an example for programs
that draw a scene graph with sgview's renderer.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "sgview (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), libboost-dev")

include(CPack)
