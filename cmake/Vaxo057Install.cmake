# Install rules: the three libraries, the public headers under
# <prefix>/include/vaxo057 in the source tree's layout ("DataMgr/DataMgr.h",
# "framework/CString.h", "utility/DateTime.h"), a CMake package
# (find_package(vaxo057 CONFIG) gives vaxo057::vaxo057) and a pkg-config
# file (vaxo057.pc).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(VAXO057_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/vaxo057)
set(VAXO057_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/vaxo057)

# Headers used only by the sources of the libraries; no public header
# includes them, and they are not installed.
set(VAXO057_INTERNAL_HEADERS
  DataMgr/filter/FilterTypes.h
  DataMgr/records/RecordList.h
  DataMgr/records/RecordOrder.h
  DataMgr/schema/ValueCodec.h
  DataMgr/sort/SortKeyTable.h
  DataMgr/sort/SortRules.h
  DataMgr/types/ArchiveExchange.h
  DataMgr/types/CellValue.h
  DataMgr/types/CheckedSwap.h
  utility/FileWriting.h
  utility/TextRules.h)

file(GLOB_RECURSE VAXO057_HEADERS RELATIVE ${VAXO057_INCLUDE_ROOT}
  ${VAXO057_INCLUDE_ROOT}/framework/*.h
  ${VAXO057_INCLUDE_ROOT}/utility/*.h
  ${VAXO057_INCLUDE_ROOT}/DataMgr/*.h)
list(REMOVE_ITEM VAXO057_HEADERS ${VAXO057_INTERNAL_HEADERS})
foreach(header IN LISTS VAXO057_HEADERS)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${VAXO057_INCLUDE_ROOT}/${header} DESTINATION ${VAXO057_INSTALL_INCLUDEDIR}/${folder})
endforeach()

# The installed libraries find each other beside themselves.
set_target_properties(framework vaxo009 vaxo057 PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS framework vaxo009 vaxo057 EXPORT vaxo057Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${VAXO057_INSTALL_INCLUDEDIR})
install(EXPORT vaxo057Targets NAMESPACE vaxo057:: DESTINATION ${VAXO057_INSTALL_CMAKEDIR})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/vaxo057Config.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/vaxo057Config.cmake INSTALL_DESTINATION ${VAXO057_INSTALL_CMAKEDIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/vaxo057ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vaxo057Config.cmake ${CMAKE_CURRENT_BINARY_DIR}/vaxo057ConfigVersion.cmake
  DESTINATION ${VAXO057_INSTALL_CMAKEDIR})

# The .pc file names its prefix relative to its own folder, so that an
# install moved elsewhere (or made with cmake --install --prefix) still fits.
file(RELATIVE_PATH VAXO057_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/vaxo057.pc.in ${CMAKE_CURRENT_BINARY_DIR}/vaxo057.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vaxo057.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
