# The package that find_package(MorvUt) finds, and a pkg-config file.
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/MorvUt")
install(EXPORT MorvUtTargets NAMESPACE MorvUt:: DESTINATION "${package_dir}")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/MorvUtConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/MorvUtConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/MorvUtConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/MorvUtConfig.cmake" "${PROJECT_BINARY_DIR}/MorvUtConfigVersion.cmake"
  DESTINATION "${package_dir}")
file(RELATIVE_PATH MORVUT_PREFIX_FROM_PC "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/morvut.pc.in" "${PROJECT_BINARY_DIR}/morvut.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/morvut.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
