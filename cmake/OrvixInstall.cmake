# What `cmake --install` lays out: headers, the two libraries, a CMake package and two pkg-config files.
include(CMakePackageConfigHelpers)

install(TARGETS core gsl EXPORT OrvixGslTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
if(WIN32)
  install(FILES ${ORVIX_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/orvix" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/OrvixGsl")
install(EXPORT OrvixGslTargets NAMESPACE OrvixGsl:: DESTINATION "${package_dir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/OrvixGslConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/OrvixGslConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/OrvixGslConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/OrvixGslConfig.cmake" "${PROJECT_BINARY_DIR}/OrvixGslConfigVersion.cmake"
  DESTINATION "${package_dir}")

foreach(library core gsl)
  configure_file("${CMAKE_CURRENT_LIST_DIR}/orvix${library}.pc.in" "${PROJECT_BINARY_DIR}/orvix${library}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/orvix${library}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()
