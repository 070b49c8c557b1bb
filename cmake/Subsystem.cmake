# The parts of the library and the rules for them.

# Hosts of the desktop build and of the board build, or of Qt 5 and of Qt 6, cannot share a library
# file, so each kind of file has a name of its own. The machine models can: they differ in the default
# values of switches only.
set(ZELTOOLS_VARIANT "")
if(ZELTOOLS_BUILD STREQUAL board)
    string(APPEND ZELTOOLS_VARIANT -board)
endif()
if(ZELTOOLS_QT EQUAL 6)
    string(APPEND ZELTOOLS_VARIANT -qt6)
endif()
# The version of the binary interface. While the major version is 0, each minor version may change the
# interface; SameMinorVersion in Install.cmake tells CMake the same.
set(ZELTOOLS_SOVERSION ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
    string(APPEND ZELTOOLS_SOVERSION .${PROJECT_VERSION_MINOR})
endif()

# zel_library(NAME OUTPUT file [COMPONENT component]): a library that zel_subsystem() fills, exported as
# ZelTools::NAME and found by hosts as libFILE. The component (runtime, unless another is given) says
# which package has the library.
function(zel_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT;COMPONENT" "")
    if(NOT arg_COMPONENT)
        set(arg_COMPONENT runtime)
    endif()
    set(target ZelTools${name})
    add_library(${target})
    add_library(ZelTools::${name} ALIAS ${target})
    target_compile_features(${target} PUBLIC cxx_std_17)
    # The library calls its own classes even when a host has a class of the same name.
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic)
    # What the compiler makes of the standard library's templates is not part of the interface.
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${exports})
    set_target_properties(${target} PROPERTIES
        AUTOMOC OFF # the objects have it
        EXPORT_NAME ${name}
        INSTALL_RPATH $ORIGIN # the parts find each other under any prefix
        OUTPUT_NAME ${arg_OUTPUT}
        VERSION ${PROJECT_VERSION}${ZELTOOLS_VARIANT}
        SOVERSION ${ZELTOOLS_SOVERSION}${ZELTOOLS_VARIANT}
        LINKER_LANGUAGE CXX)
    set_property(GLOBAL APPEND PROPERTY zel_${arg_COMPONENT}_libraries ${target})
endfunction()

# zel_subsystem(NAME [LIBRARY Name] [USES ...] [QT ...] HEADERS ... [PRIVATE_HEADERS ...] SOURCES ...)
#
# An object library, zeltools_NAME, that becomes part of a shared library (Core unless LIBRARY says
# otherwise). All files are named by their path below src/. HEADERS are installed; private ones end
# in _p.h and belong to their subsystem alone. USES names the subsystems whose headers it may
# include; zel_check_includes() fails the configuration on any other include. QT names the Qt
# modules that it links beside Core.
function(zel_subsystem name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIBRARY" "USES;QT;HEADERS;PRIVATE_HEADERS;SOURCES")
    if(NOT arg_LIBRARY)
        set(arg_LIBRARY Core)
    endif()
    set(src ${PROJECT_SOURCE_DIR}/src)
    set(files ${arg_HEADERS} ${arg_PRIVATE_HEADERS} ${arg_SOURCES})
    list(TRANSFORM arg_QT PREPEND Qt${ZELTOOLS_QT}::)

    set(target zeltools_${name})
    list(TRANSFORM files PREPEND ${src}/ OUTPUT_VARIABLE paths)
    add_library(${target} OBJECT ${paths})
    target_compile_definitions(${target} PRIVATE ZelTools_EXPORTS QT_NO_CAST_FROM_ASCII
                                                 QT_NO_CAST_TO_ASCII)
    target_include_directories(${target} PRIVATE ${src} ${ZELTOOLS_INCLUDE_DIRS})
    target_link_libraries(${target} PUBLIC Qt${ZELTOOLS_QT}::Core ${arg_QT})
    list(LENGTH arg_SOURCES count)
    if(count GREATER 5)
        zel_precompile(${target})
    endif()

    set(library ZelTools${arg_LIBRARY})
    target_link_libraries(${library} PRIVATE $<BUILD_INTERFACE:${target}> PUBLIC Qt${ZELTOOLS_QT}::Core
                                                                                 ${arg_QT})
    list(GET ZELTOOLS_INCLUDE_DIRS 0 include_dir)
    list(TRANSFORM arg_HEADERS PREPEND ${include_dir}/zeltools/ OUTPUT_VARIABLE public_headers)
    target_sources(${library} PUBLIC FILE_SET HEADERS BASE_DIRS ${include_dir} FILES ${public_headers})

    foreach(header IN LISTS arg_HEADERS arg_PRIVATE_HEADERS)
        set_property(GLOBAL PROPERTY zel_owner_${header} ${name})
    endforeach()
    set_property(GLOBAL PROPERTY zel_library_${name} ${library})
    set_property(GLOBAL PROPERTY zel_uses_${name} ${arg_USES})
    set_property(GLOBAL PROPERTY zel_files_${name} ${files})
    set_property(GLOBAL APPEND PROPERTY zel_subsystems ${name})
endfunction()

# Gives each subsystem its floor, one above the highest that it uses, in the global property
# zel_floor_NAME; a circle would leave some without one, and fails the configuration.
function(zel_check_uses)
    get_property(waiting GLOBAL PROPERTY zel_subsystems)
    set(floor 0)
    while(waiting)
        set(settled "")
        foreach(name IN LISTS waiting)
            get_property(uses GLOBAL PROPERTY zel_uses_${name})
            list(REMOVE_ITEM uses ${lower})
            if(NOT uses)
                list(APPEND settled ${name})
                set_property(GLOBAL PROPERTY zel_floor_${name} ${floor})
            endif()
        endforeach()
        if(NOT settled)
            message(FATAL_ERROR "These subsystems use each other in a circle, or one that does not "
                                "exist: ${waiting}")
        endif()
        list(APPEND lower ${settled})
        list(REMOVE_ITEM waiting ${settled})
        math(EXPR floor "${floor} + 1")
    endwhile()
endfunction()

# Each header of the project that a file includes must be listed, belong to the file's own subsystem
# or to one that it uses, and not be private to another one.
function(zel_check_includes)
    get_property(names GLOBAL PROPERTY zel_subsystems)
    foreach(name IN LISTS names)
        get_property(uses GLOBAL PROPERTY zel_uses_${name})
        get_property(files GLOBAL PROPERTY zel_files_${name})
        foreach(file IN LISTS files)
            set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
            file(STRINGS ${file} includes REGEX "^#include (\"|<zeltools/)")
            foreach(include IN LISTS includes)
                string(REGEX REPLACE "^#include (\"|<zeltools/)([^\">]*).*" "\\2" header "${include}")
                zel_check_include(${file} ${header} ${name} "${uses}")
            endforeach()
        endforeach()
    endforeach()
endfunction()

function(zel_check_include file header name uses)
    if(header MATCHES "^(platform|zeltools_export)\\.h$" OR header MATCHES "\\.moc$")
        return() # generated
    endif()
    get_property(owner GLOBAL PROPERTY zel_owner_${header})
    if(NOT owner)
        message(FATAL_ERROR "${file} includes ${header}, which no subsystem lists")
    elseif(NOT owner STREQUAL name AND NOT owner IN_LIST uses)
        message(FATAL_ERROR "${file} includes ${header}, but subsystem ${name} does not use ${owner}")
    elseif(NOT owner STREQUAL name AND header MATCHES "_p\\.h$")
        message(FATAL_ERROR "${file} includes ${header}, which is private to subsystem ${owner}")
    endif()
endfunction()
