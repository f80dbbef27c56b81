# What is laid down where. Two components: Runtime draws, Development builds hosts. All paths between installed files
# are relative, so that an installed tree can be moved.

set(SG_MODULE_DESTINATION ${CMAKE_INSTALL_LIBDIR}/OpenGLRenderer)
set(SG_ASSETS_DESTINATION ${CMAKE_INSTALL_DATADIR}/OpenGLRenderer)
set(SG_INCLUDES_DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/OpenGLRenderer)
set(SG_CONFIG_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/OpenGLRenderer)

file(RELATIVE_PATH SG_LIBRARIES_FROM_PROGRAMS ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH SG_ASSETS_FROM_LIBRARIES ${CMAKE_INSTALL_FULL_LIBDIR} ${CMAKE_INSTALL_FULL_DATADIR}/OpenGLRenderer)
file(RELATIVE_PATH SG_INCLUDES_FROM_LIBRARIES
    ${CMAKE_INSTALL_FULL_LIBDIR} ${CMAKE_INSTALL_FULL_INCLUDEDIR}/OpenGLRenderer)

# sg_install_component(NAME): the installed package's component of that name.
function(sg_install_component name)
    install(EXPORT OpenGLRenderer${name} FILE OpenGLRenderer${name}.cmake NAMESPACE SG::
        DESTINATION ${SG_CONFIG_DESTINATION} COMPONENT Development)
endfunction()

# sg_install_library(NAME DESCRIPTION [REQUIRED...]): library, headers and pkg-config file. What it requires goes by
# pkg-config's names.
function(sg_install_library name description)
    install(TARGETS ${name} EXPORT OpenGLRenderer${name}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
        INCLUDES DESTINATION ${SG_INCLUDES_DESTINATION})
    sg_install_component(${name})

    get_target_property(headers ${name} SOURCES)
    list(FILTER headers INCLUDE REGEX "\\.h$")
    install(FILES ${headers} DESTINATION ${SG_INCLUDES_DESTINATION}/${name} COMPONENT Development)

    set(library SG${name})
    list(JOIN ARGN ", " required)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${library}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${library}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endfunction()

include(CMakePackageConfigHelpers)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OpenGLRendererConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_SOURCE_DIR}/cmake/OpenGLRendererConfig.cmake
    ${PROJECT_BINARY_DIR}/OpenGLRendererConfigVersion.cmake
    DESTINATION ${SG_CONFIG_DESTINATION} COMPONENT Development)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Runtime)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Documentation DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)
