# The package for CMake and pkg-config, what is installed beside the libraries, and the target that
# removes an installation.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

if(NOT BUILD_SHARED_LIBS)
    include(StaticLibraries)
endif()
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZelTools)
set(runtime_targets ZelToolsTargets)
set(qml_targets ZelToolsQuickTargets)
install(TARGETS ZelTools EXPORT ${runtime_targets})
# A file of targets stops each host if the library of one is missing. So each component has a file of its
# own, which only hosts of its libraries include.
foreach(component IN ITEMS runtime qml)
    get_property(libraries GLOBAL PROPERTY zel_${component}_libraries)
    if(libraries)
        install(TARGETS ${libraries} EXPORT ${${component}_targets}
            LIBRARY COMPONENT ${component} NAMELINK_COMPONENT development
            ARCHIVE COMPONENT development
            FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
        install(EXPORT ${${component}_targets} NAMESPACE ZelTools:: DESTINATION ${package_dir}
                COMPONENT development)
    endif()
endforeach()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZelToolsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZelToolsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZelToolsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZelToolsConfig.cmake
              ${PROJECT_BINARY_DIR}/ZelToolsConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT development)
install(PROGRAMS ${PROJECT_SOURCE_DIR}/tools/zelsim.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zeltools COMPONENT tools)
if(BUILD_SHARED_LIBS) # gdb loads it together with the library.
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/gdb/zeltools.py
            DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}
            RENAME libZelTools.so.${PROJECT_VERSION}${ZELTOOLS_VARIANT}-gdb.py
            COMPONENT development)
endif()

# From the folder of the file to the prefix, so that an installed tree can be moved.
file(RELATIVE_PATH ZELTOOLS_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
list(TRANSFORM ZELTOOLS_QT_MODULES REPLACE "(.+)" "Qt${ZELTOOLS_QT}\\1 >= ${ZELTOOLS_QT_VERSION}"
     OUTPUT_VARIABLE modules)
list(JOIN modules ", " ZELTOOLS_PC_REQUIRES)

# zel_pc_file(NAME): the file NAME.pc for pkg-config.
function(zel_pc_file name)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
            COMPONENT development)
endfunction()

zel_pc_file(zeltools)
zel_pc_file(zeltools-simulator)
if(TARGET ZelToolsSupport)
    zel_pc_file(zeltools-support)
endif()
if(TARGET ZelToolsQuick)
    zel_pc_file(zeltools-quick)
endif()

if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} -D BUILD=${PROJECT_BINARY_DIR}
                                 -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
        COMMENT "Removing what was installed last" VERBATIM)
endif()
