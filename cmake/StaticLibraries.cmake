# What a host links with the static libraries, by CMake or by pkg-config: the libraries that
# the subsystems use, and the objects that hosts do not refer to themselves.

# zel_link_static(LIBRARY SUBSYSTEM): the host links what the subsystem links.
function(zel_link_static library subsystem)
    get_target_property(links zeltools_${subsystem} LINK_LIBRARIES)
    list(FILTER links EXCLUDE REGEX "^Qt[56]::")
    foreach(link IN LISTS links)
        if(link STREQUAL LibArchive::LibArchive)
            set(flag -larchive)
            set(package "LibArchive 3.6")
        elseif(link STREQUAL Threads::Threads)
            set(flag -pthread)
            set(package Threads)
        else()
            cmake_path(GET link STEM link)
            string(REGEX REPLACE "^lib" "" link ${link})
            set(flag -l${link})
            set(package "")
        endif()
        set_property(TARGET ${library} APPEND PROPERTY INTERFACE_LINK_LIBRARIES
                     $<INSTALL_INTERFACE:$<LINK_ONLY:${link}>>)
        set_property(GLOBAL APPEND PROPERTY zel_flags_${library} ${flag})
        if(package)
            set_property(GLOBAL APPEND PROPERTY zel_packages "find_package(${package} QUIET)")
        endif()
    endforeach()
endfunction()

# zel_joined(OUT PROPERTY SEPARATOR): the global property without repetitions, as a text.
function(zel_joined out property separator)
    get_property(values GLOBAL PROPERTY ${property})
    list(REMOVE_DUPLICATES values)
    list(JOIN values "${separator}" joined)
    set(${out} "${joined}" PARENT_SCOPE)
endfunction()

get_property(subsystems GLOBAL PROPERTY zel_subsystems)
foreach(subsystem IN LISTS subsystems)
    get_property(library GLOBAL PROPERTY zel_library_${subsystem})
    zel_link_static(${library} ${subsystem})
endforeach()
zel_joined(ZELTOOLS_STATIC_PACKAGES zel_packages "\n")
zel_joined(ZELTOOLS_PC_LIBS zel_flags_ZelToolsCore " ")
zel_joined(ZELTOOLS_PC_SUPPORT_LIBS zel_flags_ZelToolsSupport " ")

# The linker takes an object out of an archive only if something refers to it. The switches of the
# catalogue and the predefined modules must be known also to a host that names none of them.
set(roots _ZN8zeltools6envvar7EnvVars15EncryptedConfigE _ZN3Log7PaymentE)
foreach(root IN LISTS roots) # The linker ignores a name that no longer exists.
    file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/symbols/libzeltools0.symbols found REGEX "^ ${root}@")
    if(NOT found)
        message(FATAL_ERROR "The libraries have no ${root} that a static host could refer to")
    endif()
endforeach()
list(TRANSFORM roots PREPEND -Wl,--undefined=)
target_link_options(ZelToolsCore INTERFACE ${roots})
list(JOIN roots " " ZELTOOLS_PC_ROOTS)
string(APPEND ZELTOOLS_PC_ROOTS " ")
