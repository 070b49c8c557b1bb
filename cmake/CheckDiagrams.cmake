# cmake -D FOLDER=... -D NAMES=... -P CheckDiagrams.cmake: fails when a picture was made from another
# text than the one beside it.
foreach(name IN LISTS NAMES)
    file(SHA256 ${FOLDER}/${name}.dot hash)
    file(STRINGS ${FOLDER}/${name}.svg found REGEX "from ${hash} ")
    if(NOT found)
        message(SEND_ERROR "docs/diagrams/${name}.svg is not current; ./dev docs draws it anew")
    endif()
endforeach()
