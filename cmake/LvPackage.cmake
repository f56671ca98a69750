# The installed package: what find_package(LvGeoLocation) and pkg-config find.

include(CMakePackageConfigHelpers)

set(lv_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/LvGeoLocation")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/LvGeoLocationConfig.cmake.in"
                              "${CMAKE_BINARY_DIR}/LvGeoLocationConfig.cmake" INSTALL_DESTINATION "${lv_package_dir}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/LvGeoLocationConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_BINARY_DIR}/LvGeoLocationConfig.cmake" "${CMAKE_BINARY_DIR}/LvGeoLocationConfigVersion.cmake"
        DESTINATION "${lv_package_dir}")
install(EXPORT LvGeoLocationTargets NAMESPACE Lv:: DESTINATION "${lv_package_dir}")

# lv_install_pkgconfig(<library> <description> <required modules>)
function(lv_install_pkgconfig library description requires)
  set(LV_PC_NAME "${library}")
  set(LV_PC_DESCRIPTION "${description}")
  set(LV_PC_REQUIRES "${requires}")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${CMAKE_BINARY_DIR}/${library}.pc" @ONLY)
  install(FILES "${CMAKE_BINARY_DIR}/${library}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

lv_install_pkgconfig(LvCore "Base templates, settings, files and concurrency of the Lv libraries"
                     "Qt6Core Qt6Gui Qt6Xml Qt6Concurrent")
lv_install_pkgconfig(LvXML "Typed reading and building of XML for the Lv libraries" "Qt6Core Qt6Gui Qt6Xml")
lv_install_pkgconfig(LvGUIWidgets "Widgets of the Lv libraries" "LvCore Qt6Core Qt6Gui Qt6Widgets")
lv_install_pkgconfig(LvGeoLocation "${PROJECT_DESCRIPTION}"
                     "LvCore LvXML LvGUIWidgets Qt6Core Qt6Gui Qt6Widgets Qt6Xml Qt6Concurrent")
