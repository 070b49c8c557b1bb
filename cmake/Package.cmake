# The Debian packages, one for each component of the installation. `./dev package` builds and checks
# them; docs/packaging.md lists their contents.
if(NOT BUILD_SHARED_LIBS)
    return() # A static library is of no use to the packages that share it.
endif()
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(documents ${PROJECT_BINARY_DIR}/debian)
set(ZELTOOLS_PACKAGE_COMMIT "" CACHE STRING
    "End of the version of the packages, such as +git20261122.1a2b3c, unless they are of a release")
set(version ${PROJECT_VERSION}-0zel1${ZELTOOLS_PACKAGE_COMMIT}) # "zel1" tells it from that of a distribution
string(TOLOWER ${ZELTOOLS_MODEL} model)

# The names. Each package conflicts with those of other models or builds that have files in common with it.
set(runtime libzeltools${PROJECT_VERSION_MAJOR}${ZELTOOLS_VARIANT})
set(runtime_package ${runtime})
set(development_package libzeltools${ZELTOOLS_VARIANT}-dev)
set(tools_package zeltools-tools${ZELTOOLS_VARIANT})
set(qml_package qml-module-zeltools)
set(documentation_package libzeltools-doc)
if(ZELTOOLS_QT EQUAL 6)
    set(qml_package qml6-module-zeltools)
endif()
set(runtime_replaces "")
set(qml_replaces "")
if(ZELTOOLS_BUILD STREQUAL board OR NOT ZELTOOLS_MODEL STREQUAL VIVO)
    set(runtime_package ${runtime}-${model})
    set(runtime_replaces ${runtime})
endif()
if(ZELTOOLS_BUILD STREQUAL board)
    set(qml_replaces ${qml_package})
    string(APPEND qml_package -board)
endif()
set(development_replaces libzeltools-development)
set(tools_replaces zelctl)
set(documentation_replaces "")

set(exactly "(= ${version})")
set(runtime_depends "")
set(qml_depends "${runtime} ${exactly}")
set(tools_depends "${runtime} ${exactly}")
set(development_depends "${runtime} ${exactly}")
set(documentation_depends "")
set(tools_recommends python3)
# The libraries that are loaded when they are needed: dpkg-shlibdeps does not see them.
set(runtime_recommends "")
if(ZELTOOLS_LIBCRYPTO)
    find_package(OpenSSL 3.0 REQUIRED COMPONENTS Crypto)
    string(REGEX MATCH "^[0-9]+" openssl_soversion ${OPENSSL_VERSION})
    list(APPEND runtime_recommends libssl${openssl_soversion})
endif()
if(ZELTOOLS_LIBSYSTEMD)
    list(APPEND runtime_recommends libsystemd0)
endif()
list(JOIN runtime_recommends ", " runtime_recommends)
if(ZELTOOLS_QT EQUAL 5)
    string(APPEND development_depends ", qtbase5-dev (>= ${ZELTOOLS_QT_VERSION})")
    set(qml_modules qml-module-qtquick2 qml-module-qtquick-layouts qml-module-qtquick-templates2
                    qml-module-qtquick-window2)
    set(development_suggests qtdeclarative5-dev)
else()
    string(APPEND development_depends ", qt6-base-dev (>= ${ZELTOOLS_QT_VERSION}), qt6-scxml-dev")
    set(qml_modules qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
                    qml6-module-qtquick qml6-module-qtquick-layouts qml6-module-qtquick-templates
                    qml6-module-qtquick-window)
    set(development_suggests qt6-declarative-dev)
endif()
list(JOIN qml_modules ", " qml_modules)
string(APPEND qml_depends ", ${qml_modules}, fonts-materialdesignicons-webfont")

set(runtime_summary "library beneath vending and coffee machines")
set(runtime_text "Logging, switches, an encrypted format, state machines, links to simulators,"
                 "time and diagnostics.")
set(development_summary "headers and build files of the ZelTools libraries")
set(development_text "Everything that a host of the libraries is built with, by CMake or pkg-config.")
set(tools_summary "command-line companion of the ZelTools libraries")
set(tools_text "zelctl reads and writes the files of a machine. A format for lnav and a"
               "simulator for tests in Python come with it.")
set(qml_summary "service screen of vending and coffee machines")
set(qml_text "The QML modules ZelTools, ZelTools.Style and ZelTools.Service, and their"
             "library for C++.")
set(documentation_summary "documents of the ZelTools libraries")
set(documentation_text "The guides, the formats and the reference of all headers, as HTML.")

set(components runtime development tools)
if(TARGET ZelToolsQuick)
    list(APPEND components qml)
    string(APPEND development_suggests ", ${qml_package}") # only for hosts with a screen
endif()
set(ZELTOOLS_HTML "" CACHE PATH "Folder of the documents, for their package")
if(ZELTOOLS_HTML)
    list(APPEND components documentation)
    install(DIRECTORY ${ZELTOOLS_HTML} DESTINATION share/doc/${documentation_package}
            COMPONENT documentation EXCLUDE_FROM_ALL)
endif()

# The control files of the packages with libraries: what other packages that link them depend on.
math(EXPR next_minor "${PROJECT_VERSION_MINOR} + 1")
set(next_soversion 0.${next_minor})
if(PROJECT_VERSION_MAJOR GREATER 0)
    math(EXPR next_soversion "${PROJECT_VERSION_MAJOR} + 1")
endif()
foreach(component IN ITEMS runtime qml)
    set(provider ${runtime})
    if(component STREQUAL qml)
        set(provider ${qml_package})
    endif()
    set(shlibs "")
    get_property(libraries GLOBAL PROPERTY zel_${component}_libraries)
    foreach(library IN LISTS libraries)
        get_target_property(name ${library} OUTPUT_NAME)
        string(APPEND shlibs "lib${name} ${ZELTOOLS_SOVERSION}${ZELTOOLS_VARIANT} "
               "${provider} (>= ${ZELTOOLS_SOVERSION}), ${provider} (<< ${next_soversion}~)\n")
    endforeach()
    file(WRITE ${documents}/${component}/shlibs ${shlibs})
    file(COPY ${debian}/triggers DESTINATION ${documents}/${component})
    set(${component}_control ${documents}/${component}/shlibs ${documents}/${component}/triggers)
endforeach()

# The list of symbols, where there is one for this build: then packages depend on the version that has
# the symbols which they use.
if(EXISTS ${PROJECT_SOURCE_DIR}/packaging/symbols/${runtime}.symbols)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/symbols/${runtime}.symbols
                   ${documents}/runtime/symbols @ONLY)
    list(APPEND runtime_control ${documents}/runtime/symbols)
endif()

# The documents that Debian requires in each package. The changelog has the time of SOURCE_DATE_EPOCH if
# that is set.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${debian}/changelog.in ${documents}/changelog @ONLY)
execute_process(COMMAND gzip -9nc ${documents}/changelog
                OUTPUT_FILE ${documents}/changelog.Debian.gz COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md
                OUTPUT_FILE ${documents}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS components)
    install(FILES ${documents}/changelog.Debian.gz ${documents}/changelog.gz ${debian}/copyright
            DESTINATION share/doc/${${component}_package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    if(EXISTS ${debian}/${component}.lintian-overrides)
        install(FILES ${debian}/${component}.lintian-overrides DESTINATION share/lintian/overrides
                RENAME ${${component}_package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    endif()

    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${${component}_package})
    list(JOIN ${component}_text "\n" text)
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${${component}_summary}\n${text}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS ${${component}_depends})
    set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS ${${component}_recommends})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SUGGESTS ${${component}_suggests})
    set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${${component}_control})
    if(${component}_replaces)
        set(CPACK_DEBIAN_${upper}_PACKAGE_PROVIDES "${${component}_replaces} ${exactly}")
        set(CPACK_DEBIAN_${upper}_PACKAGE_CONFLICTS ${${component}_replaces})
        set(CPACK_DEBIAN_${upper}_PACKAGE_REPLACES ${${component}_replaces})
    endif()
endforeach()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_QML_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
foreach(upper IN ITEMS RUNTIME TOOLS QML)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_${upper}_DEBUGINFO_PACKAGE ON)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # Each package has its own.
set(CPACK_PACKAGE_VENDOR "ZelTools authors")
set(CPACK_PACKAGE_CONTACT "ZelTools authors <zeltools@example.invalid>")
set(CPACK_DEBIAN_PACKAGE_SOURCE zeltools)
set(CPACK_DEBIAN_PACKAGE_VERSION ${version})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
