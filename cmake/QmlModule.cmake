# The QML modules, which lie below one import path: the folder qml of the build and of the
# installation.
set(ZELTOOLS_QML_DIR ${PROJECT_BINARY_DIR}/qml)
set(ZELTOOLS_INSTALL_QML_DIR ${CMAKE_INSTALL_LIBDIR}/qt${ZELTOOLS_QT}/qml CACHE STRING
    "Where the QML modules are installed, below the prefix")

get_target_property(moc Qt${ZELTOOLS_QT}::moc IMPORTED_LOCATION)
get_filename_component(moc_dir ${moc} DIRECTORY)
find_program(QMLTYPEREGISTRAR qmltyperegistrar HINTS ${moc_dir} /usr/lib/qt6/libexec NO_DEFAULT_PATH)
mark_as_advanced(QMLTYPEREGISTRAR)

# zel_qml_metatypes(OUT file COLLECTION name HEADERS ...): what moc knows about the headers, which are
# named by their path below src/, in one JSON file.
function(zel_qml_metatypes)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "OUT;COLLECTION" "HEADERS")
    set(includes "$<TARGET_PROPERTY:zeltools_quick,INCLUDE_DIRECTORIES>")
    foreach(header IN LISTS arg_HEADERS)
        string(REPLACE / _ name ${arg_COLLECTION}_${header})
        set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
        add_custom_command(OUTPUT ${source}.json BYPRODUCTS ${source}
            COMMAND Qt${ZELTOOLS_QT}::moc --output-json
                    "$<$<BOOL:${includes}>:-I$<JOIN:${includes},;-I>>" -o ${source}
                    ${PROJECT_SOURCE_DIR}/src/${header}
            DEPENDS ${PROJECT_SOURCE_DIR}/src/${header}
            COMMAND_EXPAND_LISTS VERBATIM)
        list(APPEND jsons ${source}.json)
    endforeach()
    add_custom_command(OUTPUT ${arg_OUT}
        COMMAND Qt${ZELTOOLS_QT}::moc --collect-json -o ${arg_OUT} ${jsons}
        DEPENDS ${jsons} VERBATIM)
endfunction()

# zel_qml_plugin(TARGET Module SOURCES ... HEADERS ... FOREIGN_HEADERS ...): the plugin of a module
# whose types stand in the headers, with its qmldir and plugins.qmltypes.
function(zel_qml_plugin target module)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;HEADERS;FOREIGN_HEADERS")
    string(REPLACE . / path ${module})
    set(dir ${ZELTOOLS_QML_DIR}/${path})
    set(types ${CMAKE_CURRENT_BINARY_DIR}/${target}_metatypes.json)
    set(foreign ${CMAKE_CURRENT_BINARY_DIR}/${target}_foreign_metatypes.json)
    zel_qml_metatypes(OUT ${types} COLLECTION own HEADERS ${arg_HEADERS})
    zel_qml_metatypes(OUT ${foreign} COLLECTION foreign HEADERS ${arg_FOREIGN_HEADERS})

    # The types of Qt that ours inherit. Its files lie beside its libraries; their names differ by
    # version.
    get_target_property(core Qt${ZELTOOLS_QT}::Core LOCATION)
    get_filename_component(metatypes ${core} DIRECTORY)
    string(APPEND metatypes /metatypes)
    foreach(name IN ITEMS core gui qml quick)
        file(GLOB found ${metatypes}/qt${ZELTOOLS_QT}${name}_metatypes.json
                        ${metatypes}/qt${ZELTOOLS_QT}${name}_*_metatypes.json)
        if(NOT found)
            message(FATAL_ERROR "${metatypes} has no types of Qt's library ${name}")
        endif()
        list(GET found 0 found)
        list(APPEND qt_types ${found})
    endforeach()
    list(JOIN qt_types "," qt_types)

    set(registration ${CMAKE_CURRENT_BINARY_DIR}/${target}_registration.cpp)
    set(qmltypes ${dir}/plugins.qmltypes)
    file(MAKE_DIRECTORY ${dir})
    add_custom_command(OUTPUT ${registration} ${qmltypes}
        COMMAND ${QMLTYPEREGISTRAR} --generate-qmltypes=${qmltypes} --import-name=${module}
                --major-version=1 --minor-version=0 --foreign-types=${foreign},${qt_types}
                -o ${registration} ${types}
        DEPENDS ${types} ${foreign} VERBATIM)
    # Types that inherit those of Qt Quick are not resolved otherwise.
    file(WRITE ${dir}/qmldir "module ${module}\nplugin ${target}\nclassname Plugin\ntypeinfo plugins.qmltypes\n")
    file(APPEND ${dir}/qmldir "depends QtQuick 2.15\n")

    add_library(${target} MODULE ${arg_SOURCES} ${registration})
    file(RELATIVE_PATH to_libraries /${ZELTOOLS_INSTALL_QML_DIR}/${path} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(${target} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${dir}
                                               INSTALL_RPATH $ORIGIN/${to_libraries})
    if(NOT ZELTOOLS_SANITIZE) # The functions of a sanitizer come with the program.
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
    # The generated source names the headers without their folder.
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${ZELTOOLS_INCLUDE_DIRS})
    install(TARGETS ${target} DESTINATION ${ZELTOOLS_INSTALL_QML_DIR}/${path} COMPONENT qml)
    install(FILES ${dir}/qmldir ${qmltypes} DESTINATION ${ZELTOOLS_INSTALL_QML_DIR}/${path} COMPONENT qml)
endfunction()

# zel_qml_files(Module FOLDER): a module that consists of the QML files of a folder, of which those
# in subfolders are not for users of the module. A build finds them by links.
function(zel_qml_files module folder)
    string(REPLACE . / path ${module})
    set(dir ${ZELTOOLS_QML_DIR}/${path})
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*)
    list(SORT files)
    set(qmldir "module ${module}\n")
    foreach(file IN LISTS files)
        get_filename_component(subfolder ${file} DIRECTORY)
        file(MAKE_DIRECTORY ${dir}/${subfolder})
        file(CREATE_LINK ${folder}/${file} ${dir}/${file} SYMBOLIC)
        if(NOT subfolder AND file MATCHES "^([A-Z].*)\\.qml$")
            set(type ${CMAKE_MATCH_1})
            file(STRINGS ${folder}/${file} is_singleton REGEX "^pragma Singleton")
            if(is_singleton)
                string(APPEND qmldir "singleton ")
            endif()
            string(APPEND qmldir "${type} 1.0 ${file}\n")
        endif()
        install(FILES ${folder}/${file} DESTINATION ${ZELTOOLS_INSTALL_QML_DIR}/${path}/${subfolder}
                COMPONENT qml)
    endforeach()
    file(WRITE ${dir}/qmldir ${qmldir})
    install(FILES ${dir}/qmldir DESTINATION ${ZELTOOLS_INSTALL_QML_DIR}/${path} COMPONENT qml)
endfunction()

# zel_qml_extra_file(Module FILE): a file from elsewhere that the module's files use. It is copied with its
# licence. Only a package, which depends on that of the file, links it: other installations can be moved.
function(zel_qml_extra_file module file)
    string(REPLACE . / path ${module})
    get_filename_component(name ${file} NAME)
    file(CREATE_LINK ${file} ${ZELTOOLS_QML_DIR}/${path}/${name} SYMBOLIC)
    set(source ${file})
    cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX ${file} is_installed)
    if(ZELTOOLS_PACKAGE AND is_installed)
        set(source ${CMAKE_CURRENT_BINARY_DIR}/${name})
        set(installed_dir ${CMAKE_INSTALL_PREFIX}/${ZELTOOLS_INSTALL_QML_DIR}/${path})
        file(RELATIVE_PATH target ${installed_dir} ${file})
        file(CREATE_LINK ${target} ${source} SYMBOLIC)
    else()
        cmake_path(REPLACE_EXTENSION name LAST_ONLY txt OUTPUT_VARIABLE licence)
        install(FILES ${PROJECT_SOURCE_DIR}/packaging/licences/${licence}
                DESTINATION ${ZELTOOLS_INSTALL_QML_DIR}/${path} COMPONENT qml)
    endif()
    install(FILES ${source} DESTINATION ${ZELTOOLS_INSTALL_QML_DIR}/${path} COMPONENT qml)
endfunction()
