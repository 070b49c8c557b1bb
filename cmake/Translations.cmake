# The texts of the service screen and of zelctl in other languages, with the tools of Qt Linguist, which
# lie beside moc or in the PATH.
include_guard(GLOBAL)
get_target_property(moc Qt${ZELTOOLS_QT}::moc IMPORTED_LOCATION)
get_filename_component(moc_dir ${moc} DIRECTORY)
foreach(tool IN ITEMS LUPDATE LRELEASE)
    string(TOLOWER ${tool} name)
    find_program(ZELTOOLS_${tool} ${name} HINTS ${moc_dir} ${moc_dir}/../bin)
    mark_as_advanced(ZELTOOLS_${tool})
endforeach()
if(NOT ZELTOOLS_LRELEASE)
    message(STATUS "There is no lrelease of Qt Linguist: the service screen and zelctl are in English only")
endif()

# zel_translations(TARGET TS...): compiles the files into the resources of the target, where they are
# :/zeltools/translations/NAME.qm.
function(zel_translations target)
    if(NOT ZELTOOLS_LRELEASE)
        return()
    endif()
    set(list "")
    foreach(file IN LISTS ARGN)
        get_filename_component(name ${file} NAME_WE)
        set(compiled ${CMAKE_CURRENT_BINARY_DIR}/${name}.qm)
        add_custom_command(OUTPUT ${compiled}
            COMMAND ${ZELTOOLS_LRELEASE} -silent ${file} -qm ${compiled}
            DEPENDS ${file} VERBATIM)
        list(APPEND all ${compiled})
        string(APPEND list "<file alias=\"${name}.qm\">${compiled}</file>\n")
    endforeach()
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/translations)
    file(GENERATE OUTPUT ${resources}.qrc CONTENT
         "<RCC><qresource prefix=\"/zeltools/translations\">\n${list}</qresource></RCC>\n")
    add_custom_command(OUTPUT ${resources}.cpp
        COMMAND Qt${ZELTOOLS_QT}::rcc --name ${target}_translations -o ${resources}.cpp ${resources}.qrc
        DEPENDS ${all} ${resources}.qrc VERBATIM)
    target_sources(${target} PRIVATE ${resources}.cpp)
endfunction()

# zel_update_translations(TARGET SOURCES FOLDER... TS FILE...): the target update_translations adds the
# new texts of the sources to the files, and removes those that are gone.
function(zel_update_translations target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;TS")
    # Lines of code have no place in the files, so that they only change with the texts.
    set(update ${ZELTOOLS_LUPDATE} -silent -locations none -source-language en
        -I ${PROJECT_SOURCE_DIR}/src ${arg_SOURCES})
    set(files ${arg_TS})
    # English is the language of the sources, and needs only the forms for one and for several.
    set(english ${arg_TS})
    list(FILTER english INCLUDE REGEX "_en.ts$")
    list(FILTER arg_TS EXCLUDE REGEX "_en.ts$")
    set(commands COMMAND ${update} -no-obsolete -ts ${arg_TS})
    if(english)
        list(APPEND commands COMMAND ${update} -no-obsolete -pluralonly -ts ${english})
    endif()
    add_custom_target(update_${target} ${commands} VERBATIM)
    if(NOT TARGET update_translations)
        add_custom_target(update_translations)
    endif()
    add_dependencies(update_translations update_${target})
    set_target_properties(update_${target} PROPERTIES
        ZELTOOLS_UPDATE "${update}" ZELTOOLS_TS "${files}")
endfunction()

# The test translations_TARGET checks that each text of the sources is there in each language. lupdate
# finds the texts.
function(zel_check_translations target)
    if(NOT ZELTOOLS_LUPDATE)
        return()
    endif()
    get_target_property(update update_${target} ZELTOOLS_UPDATE)
    get_target_property(files update_${target} ZELTOOLS_TS)
    add_test(NAME translations_${target}
        COMMAND ${CMAKE_COMMAND} "-DUPDATE=${update}" "-DTS=${files}"
                -D FOLDER=${CMAKE_CURRENT_BINARY_DIR}/translations
                -P ${PROJECT_SOURCE_DIR}/cmake/CheckTranslations.cmake)
endfunction()
