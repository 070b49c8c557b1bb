# Removes the files of the last installation, which its manifest in the folder BUILD names, and then the
# folders of them that are named after the library and have become empty. Folders that other software
# shares, such as lib/pkgconfig, stay. Another run removes the installation before, if it was one of
# another component.

# list_folder(OUT FOLDER PATTERN...): GLOB would take brackets in the name of the folder for a pattern.
function(list_folder out folder)
    string(REGEX REPLACE "([][*?])" "[\\1]" folder "${folder}")
    list(TRANSFORM ARGN PREPEND "${folder}/" OUTPUT_VARIABLE patterns)
    file(GLOB content ${patterns})
    list(FILTER content EXCLUDE REGEX "/\\.\\.?$")
    set(${out} "${content}" PARENT_SCOPE)
endfunction()

# Removes the folder, and then those above it, as long as each is empty and the library's own.
function(remove_empty folder)
    while(folder MATCHES "/[^/]*[Zz]el[Tt]ools[^/]*(/|$)")
        list_folder(content "${folder}" * .*)
        if(content)
            return()
        endif()
        file(REMOVE_RECURSE "${folder}")
        cmake_path(GET folder PARENT_PATH folder)
    endwhile()
endfunction()

list_folder(manifests "${BUILD}" install_manifest*.txt)
if(NOT manifests)
    message(FATAL_ERROR "Nothing has been installed from this build: ${BUILD} has no install_manifest.txt")
endif()
set(last_time 0)
foreach(manifest IN LISTS manifests)
    file(TIMESTAMP "${manifest}" time "%s%f" UTC)
    if(time GREATER last_time)
        set(last_time ${time})
        set(last "${manifest}")
    endif()
endforeach()

file(STRINGS "${last}" files)
list(TRANSFORM files PREPEND "$ENV{DESTDIR}")
set(count 0)
foreach(file IN LISTS files)
    if(EXISTS "${file}" OR IS_SYMLINK "${file}")
        file(REMOVE "${file}")
        if(EXISTS "${file}" OR IS_SYMLINK "${file}")
            message(FATAL_ERROR "${file} cannot be removed")
        endif()
        math(EXPR count "${count} + 1")
    endif()
    cmake_path(GET file PARENT_PATH folder)
    remove_empty("${folder}")
endforeach()
if(count EQUAL 0)
    message(FATAL_ERROR "Nothing is removed: none of the files that ${last} names exists")
endif()
file(REMOVE "${last}") # The next run has the installation before to remove, or nothing.
message("${count} files are removed")
