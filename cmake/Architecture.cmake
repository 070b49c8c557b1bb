# Draws the subsystems, each on the floor above those that it uses. Arrows that follow from others
# are left out when ./dev docs makes the picture of it.
get_property(names GLOBAL PROPERTY zel_subsystems)
foreach(name IN LISTS names)
    get_property(floor GLOBAL PROPERTY zel_floor_${name})
    get_property(uses GLOBAL PROPERTY zel_uses_${name})
    string(APPEND floor_${floor} " ${name};")
    list(APPEND floors ${floor})
    foreach(used IN LISTS uses)
        string(APPEND arrows "    ${name} -> ${used};\n")
    endforeach()
endforeach()
list(REMOVE_DUPLICATES floors)
foreach(floor IN LISTS floors)
    string(APPEND ranks "    { rank = same;${floor_${floor}} }\n")
endforeach()
set(architecture_dot ${PROJECT_BINARY_DIR}/architecture.dot)
file(WRITE ${architecture_dot} "digraph ZelTools {
    node [shape = box, style = rounded, fontname = \"sans-serif\", fontsize = 12];
    nodesep = 0.15;
${ranks}${arrows}}
")
