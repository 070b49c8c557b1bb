# zel_subsystem(NAME HEADERS ... [PRIVATE_HEADERS ...] SOURCES ... [USES ...])
#
# An object library that becomes part of the one shared library. USES names the subsystems whose
# headers it may include; zel_check_includes() then fails the configuration on any other include,
# so that this list stays true. HEADERS are installed; private ones end in _p.h and are not.
function(zel_subsystem name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;PRIVATE_HEADERS;SOURCES;USES")
    set(target zeltools_${name})
    add_library(${target} OBJECT ${arg_HEADERS} ${arg_PRIVATE_HEADERS} ${arg_SOURCES})
    target_compile_definitions(${target} PRIVATE ZelTools_EXPORTS QT_NO_CAST_TO_ASCII)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src
                                                 ${PROJECT_BINARY_DIR}/include)
    target_link_libraries(${target} PUBLIC Qt5::Core Qt5::Network)
    foreach(header IN LISTS arg_HEADERS arg_PRIVATE_HEADERS)
        set_property(GLOBAL PROPERTY zel_owner_${header} ${name})
    endforeach()
    set_property(GLOBAL PROPERTY zel_uses_${name} ${arg_USES})
    set_property(GLOBAL PROPERTY zel_files_${name} ${arg_HEADERS} ${arg_PRIVATE_HEADERS}
                                                   ${arg_SOURCES})
    set_property(GLOBAL APPEND PROPERTY zel_subsystems ${name})
    set_property(GLOBAL APPEND PROPERTY zel_headers ${arg_HEADERS})
endfunction()

function(zel_check_includes)
    get_property(names GLOBAL PROPERTY zel_subsystems)
    foreach(name IN LISTS names)
        get_property(uses GLOBAL PROPERTY zel_uses_${name})
        get_property(files GLOBAL PROPERTY zel_files_${name})
        foreach(file IN LISTS files)
            set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
            file(STRINGS ${file} includes REGEX "^#include \"")
            foreach(include IN LISTS includes)
                string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" header "${include}")
                get_property(owner GLOBAL PROPERTY zel_owner_${header})
                if(owner AND NOT owner STREQUAL name AND NOT owner IN_LIST uses)
                    message(FATAL_ERROR "${file} includes ${header}, but subsystem ${name} "
                                        "does not use ${owner}")
                endif()
            endforeach()
        endforeach()
    endforeach()
endfunction()
