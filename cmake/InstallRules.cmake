# cmake --install copies the library, its headers, a CMake package, pkg-config files and the documents. The installed tree
# may be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zellap10)

install(TARGETS zellap10 zellap10_plotter EXPORT zellap10 FILE_SET HEADERS)
if(MSVC AND BUILD_SHARED_LIBS)
  install(FILES $<TARGET_PDB_FILE:zellap10> DESTINATION ${CMAKE_INSTALL_BINDIR} OPTIONAL)
endif()

# One prefix can hold the dynamic and the static library, so each kind has its own files. The package's own file chooses.
set(kind static)
if(BUILD_SHARED_LIBS)
  set(kind shared)
endif()
install(
  EXPORT zellap10
  FILE zellap10-${kind}.cmake
  NAMESPACE zellap10::
  DESTINATION ${package_dir})
write_basic_package_version_file(zellap10ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/zellap10Config.cmake ${CMAKE_CURRENT_BINARY_DIR}/zellap10ConfigVersion.cmake
        DESTINATION ${package_dir})

# The pkg-config files name the other folders relative to their own.
set(pkg_config_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH zellap10_pc_libdir ${pkg_config_dir} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH zellap10_pc_includedir ${pkg_config_dir} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(zellap10_pc_kind)
set(zellap10_pc_cflags)
set(zellap10_pc_libs "-L\${libdir} -lzellap10")
if(NOT BUILD_SHARED_LIBS)
  set(zellap10_pc_kind -static)
  set(zellap10_pc_cflags " -DZELLAP10_STATIC")
  # By its path, because -l prefers the dynamic library.
  set(zellap10_pc_libs "\${libdir}/${CMAKE_STATIC_LIBRARY_PREFIX}zellap10${CMAKE_STATIC_LIBRARY_SUFFIX}")
endif()
get_target_property(zellap10_plotter_name zellap10_plotter OUTPUT_NAME)
if(WIN32)
  get_target_property(zellap10_name zellap10 OUTPUT_NAME)
  set(zellap10_pc_libs "-L\${libdir} -l${zellap10_name} -lgdi32")
endif()
if(MSVC)
  set(release_only CONFIGURATIONS Release RelWithDebInfo MinSizeRel) # the names without the postfix of Debug
endif()
foreach(name IN ITEMS zellap10 zellap10-plotter)
  configure_file(cmake/${name}.pc.in ${name}${zellap10_pc_kind}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}${zellap10_pc_kind}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
                                                                          ${release_only})
endforeach()
if(NOT BUILD_SHARED_LIBS)
  # The names without "-static" are the dynamic library's, if it is installed in the prefix.
  install(
    CODE "
    set(prefix \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    set(pc \"\${prefix}/${CMAKE_INSTALL_LIBDIR}/pkgconfig\")
    if(NOT EXISTS \"\${prefix}/${package_dir}/zellap10-shared.cmake\" AND EXISTS \"\${pc}/zellap10-static.pc\")
      foreach(name IN ITEMS zellap10 zellap10-plotter)
        configure_file(\"\${pc}/\${name}-static.pc\" \"\${pc}/\${name}.pc\" COPYONLY)
      endforeach()
    endif()")
endif()

# The documents, with the reference if it has been built.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md" PATTERN "*.png")
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)
