# What cmake --install gives: library, headers, a CMake package and a pkg-config file. The installed tree may be
# moved as a whole.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zellap10)

install(TARGETS zellap10 zellap10_plotter EXPORT zellap10 FILE_SET HEADERS)
if(MSVC AND BUILD_SHARED_LIBS)
  install(FILES $<TARGET_PDB_FILE:zellap10> DESTINATION ${CMAKE_INSTALL_BINDIR} OPTIONAL)
endif()
# The library needs no other package, so its targets are the whole package.
install(
  EXPORT zellap10
  FILE zellap10Config.cmake
  NAMESPACE zellap10::
  DESTINATION ${package_dir})
write_basic_package_version_file(zellap10ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zellap10ConfigVersion.cmake DESTINATION ${package_dir})

# The pkg-config file names the other folders from its own.
set(pkg_config_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH zellap10_pc_libdir ${pkg_config_dir} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH zellap10_pc_includedir ${pkg_config_dir} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(zellap10_pc_libs -lzellap10)
set(zellap10_pc_cflags)
if(NOT BUILD_SHARED_LIBS)
  set(zellap10_pc_cflags " -DZELLAP10_STATIC")
endif()
if(WIN32)
  get_target_property(zellap10_name zellap10 OUTPUT_NAME)
  set(zellap10_pc_libs "-l${zellap10_name} -lgdi32")
endif()
foreach(name IN ITEMS zellap10 zellap10-plotter)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
endforeach()
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zellap10.pc ${CMAKE_CURRENT_BINARY_DIR}/zellap10-plotter.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The documents, with the reference if it has been built.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md" PATTERN "*.png")
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)
