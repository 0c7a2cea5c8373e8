# What `cmake --install` lays out: an SDK for hosts.
include(CMakePackageConfigHelpers)
set(_package lib/cmake/TorvaneUtilities)
install(TARGETS util framework EXPORT TorvaneUtilitiesTargets RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(FILES ${UTIL_RUNTIME_DLLS} DESTINATION bin)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/framework/include/ DESTINATION include/framework FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/ DESTINATION include FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE
        PATTERN module EXCLUDE)
install(EXPORT TorvaneUtilitiesTargets NAMESPACE Torvane:: DESTINATION ${_package})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TorvaneUtilitiesConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(${CMAKE_SOURCE_DIR}/cmake/TorvaneUtilitiesConfig.cmake.in
               ${CMAKE_BINARY_DIR}/TorvaneUtilitiesConfig.cmake @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/TorvaneUtilitiesConfig.cmake ${CMAKE_BINARY_DIR}/TorvaneUtilitiesConfigVersion.cmake
        DESTINATION ${_package})
# For product engineers: the settings compiler with its table of keys, and the functions that build with it.
install(FILES ${CMAKE_SOURCE_DIR}/cmake/ResourceLibrary.cmake ${CMAKE_SOURCE_DIR}/cmake/SettingsLibrary.cmake
        DESTINATION ${_package})
install(FILES ${UTIL_KNOWN_KEYS} ${UTIL_SETTINGS_TOOLS}/compile_settings.py ${UTIL_SETTINGS_TOOLS}/settingsfile.py
        ${UTIL_SETTINGS_TOOLS}/knownkeys.py DESTINATION ${_package}/settings)
