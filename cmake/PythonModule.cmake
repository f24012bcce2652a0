# The extension module, once for each interpreter: Python_EXECUTABLE and those listed in QDSG_PYTHONS.
#
# Only src/pyqdsg/ is compiled per interpreter. Each module goes to <build>/python/<tag>/, for example cp311, and the
# file <build>/python/interpreters lists them, a line each: tag, interpreter and folder, parted by tabs.
# The target qdsg_module stands for the module of Python_EXECUTABLE, which comes first in that file.

if(NOT Python_EXECUTABLE)
    # The system's interpreter before any other on the PATH: its headers come with its packages.
    find_program(Python_EXECUTABLE python3 PATHS /usr/bin NO_DEFAULT_PATH)
    find_program(Python_EXECUTABLE python3 REQUIRED)
endif()

function(qdsg_add_python_modules)
    file(GLOB sources CONFIGURE_DEPENDS src/pyqdsg/*.cpp)
    if(NOT sources)
        message(STATUS "src/pyqdsg has no sources: no Python module")
        return()
    endif()
    set(tags "")
    set(listing "")
    foreach(python IN LISTS Python_EXECUTABLE QDSG_PYTHONS)
        execute_process(COMMAND "${python}" "${CMAKE_SOURCE_DIR}/cmake/python_info.py"
            OUTPUT_VARIABLE info ERROR_VARIABLE error RESULT_VARIABLE result OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT result EQUAL 0)
            message(FATAL_ERROR "No module can be built for ${python}: ${error}")
        endif()
        string(REGEX MATCH "^([^\n]+)\n([^\n]+)\n([^\n]+)$" info "${info}")
        set(tag "${CMAKE_MATCH_1}")
        set(includes "${CMAKE_MATCH_2}")
        set(suffix "${CMAKE_MATCH_3}")
        if(tag IN_LIST tags)
            continue() # the same binary interface once more
        endif()
        list(APPEND tags "${tag}")

        set(folder "${CMAKE_BINARY_DIR}/python/${tag}")
        add_library(qdsg_${tag} MODULE ${sources})
        target_include_directories(qdsg_${tag} SYSTEM PRIVATE ${includes})
        target_compile_definitions(qdsg_${tag} PRIVATE QDSG_VERSION="${PROJECT_VERSION}")
        target_link_libraries(qdsg_${tag} PRIVATE qdsg_core)
        set_target_properties(qdsg_${tag} PROPERTIES
            OUTPUT_NAME qdsg PREFIX "" SUFFIX "${suffix}" LIBRARY_OUTPUT_DIRECTORY "${folder}")
        if(NOT TARGET qdsg_module)
            add_custom_target(qdsg_module DEPENDS qdsg_${tag})
        endif()
        if(EXISTS "${CMAKE_SOURCE_DIR}/src/pyqdsg/qdsg.pyi")
            configure_file(src/pyqdsg/qdsg.pyi "${folder}/qdsg.pyi" COPYONLY)
        endif()
        string(APPEND listing "${tag}\t${python}\t${folder}\n")
    endforeach()
    file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/python/interpreters" CONTENT "${listing}" @ONLY)
endfunction()
