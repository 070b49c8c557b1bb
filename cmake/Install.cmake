# The package for CMake and pkg-config, and what is installed.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZelTools)
set(libraries ZelTools ZelToolsCore ZelToolsSimulator ZelToolsStateMachines)
if(TARGET ZelToolsSupport)
    list(APPEND libraries ZelToolsSupport)
endif()
install(TARGETS ${libraries} EXPORT ZelToolsTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT ZelToolsTargets NAMESPACE ZelTools:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZelToolsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZelToolsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZelToolsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZelToolsConfig.cmake
              ${PROJECT_BINARY_DIR}/ZelToolsConfigVersion.cmake DESTINATION ${package_dir})
install(PROGRAMS ${PROJECT_SOURCE_DIR}/tools/zelsim.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zeltools)
# gdb loads it together with the library.
install(FILES ${PROJECT_SOURCE_DIR}/cmake/gdb/zeltools.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}
        RENAME libZelTools.so.${PROJECT_VERSION}-gdb.py)
# From the folder of the file to the prefix, so that an installed tree can be moved.
file(RELATIVE_PATH ZELTOOLS_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
list(TRANSFORM ZELTOOLS_QT_MODULES REPLACE "(.+)" "Qt${ZELTOOLS_QT}\\1 >= ${ZELTOOLS_QT_VERSION}"
     OUTPUT_VARIABLE modules)
list(JOIN modules ", " ZELTOOLS_PC_REQUIRES)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zeltools.pc.in ${PROJECT_BINARY_DIR}/zeltools.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zeltools.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zeltools-simulator.pc.in
               ${PROJECT_BINARY_DIR}/zeltools-simulator.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zeltools-simulator.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(TARGET ZelToolsSupport)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/zeltools-support.pc.in
                   ${PROJECT_BINARY_DIR}/zeltools-support.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/zeltools-support.pc
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
