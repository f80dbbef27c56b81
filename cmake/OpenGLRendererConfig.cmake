# find_package(OpenGLRenderer COMPONENTS ...): Maths, Utilities and SceneGraph give the libraries SG::Maths,
# SG::Utilities and SG::SceneGraph, each with those it needs; Module gives SG::Module, whose $<TARGET_FILE:SG::Module>
# a host can name to SGRendererModule. Without COMPONENTS, all of them.

set(_sg_all Maths Utilities SceneGraph Module)
if(NOT OpenGLRenderer_FIND_COMPONENTS)
    set(OpenGLRenderer_FIND_COMPONENTS ${_sg_all})
endif()

foreach(_sg_component IN LISTS OpenGLRenderer_FIND_COMPONENTS)
    if(NOT _sg_component IN_LIST _sg_all)
        set(OpenGLRenderer_${_sg_component}_FOUND FALSE)
        if(OpenGLRenderer_FIND_REQUIRED_${_sg_component})
            list(JOIN _sg_all ", " _sg_all)
            set(OpenGLRenderer_FOUND FALSE)
            set(OpenGLRenderer_NOT_FOUND_MESSAGE
                "OpenGLRenderer has no component '${_sg_component}'; it has ${_sg_all}")
            return()
        endif()
    endif()
endforeach()

set(_sg_wanted ${OpenGLRenderer_FIND_COMPONENTS})
if(SceneGraph IN_LIST _sg_wanted)
    list(APPEND _sg_wanted Maths Utilities)
endif()
if(Utilities IN_LIST _sg_wanted)
    include(CMakeFindDependencyMacro)
    find_dependency(Boost)
endif()

# In the order of the list: each library is known before those that need it.
foreach(_sg_component IN LISTS _sg_all)
    if(_sg_component IN_LIST _sg_wanted)
        include(${CMAKE_CURRENT_LIST_DIR}/OpenGLRenderer${_sg_component}.cmake)
        set(OpenGLRenderer_${_sg_component}_FOUND TRUE)
    endif()
endforeach()
