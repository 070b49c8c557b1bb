# cmake -D DOT=... -D SVG=... -P CheckArchitecture.cmake: fails when the picture was made from another text.
file(SHA256 ${DOT} hash)
file(STRINGS ${SVG} found REGEX "architecture.dot ${hash}")
if(NOT found)
    message(FATAL_ERROR "docs/architecture.svg is not current; ./dev docs draws it anew")
endif()
