# What is installed where; the components are those of the packages.
set(VEMO_CONFIG "${CMAKE_INSTALL_LIBDIR}/cmake/Vemo")
install(TARGETS vemo EXPORT VemoTargets ARCHIVE COMPONENT development)
install(TARGETS vemo_shared EXPORT VemoTargets
  LIBRARY COMPONENT library NAMELINK_COMPONENT development)
install(TARGETS vemo-cli COMPONENT command)
install(DIRECTORY include/vemo DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT VemoTargets NAMESPACE Vemo:: DESTINATION ${VEMO_CONFIG} COMPONENT development)
configure_package_config_file(cmake/VemoConfig.cmake.in VemoConfig.cmake INSTALL_DESTINATION ${VEMO_CONFIG})
write_basic_package_version_file(VemoConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/VemoConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/VemoConfigVersion.cmake"
  DESTINATION ${VEMO_CONFIG} COMPONENT development)
foreach(name vemo vemo-cpp)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)
endforeach()
install(DIRECTORY examples/c DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libvemo-dev/examples COMPONENT development)

install(FILES docs/vemo.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command)
install(FILES "${VEMO_LANGUAGE_PAGE}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man7 COMPONENT command)
install(FILES completions/vemo.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME vemo
  COMPONENT command)
# Where zsh looks of itself: what belongs to the distribution, and what does not.
set(VEMO_ZSH "$<IF:$<STREQUAL:${CMAKE_INSTALL_PREFIX},/usr>,vendor-completions,site-functions>")
install(FILES completions/_vemo DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${VEMO_ZSH} COMPONENT command)
install(FILES completions/vemo.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT command)

# In the place of a distribution, where the Python of the system finds it under /usr.
install(DIRECTORY python/vemo DESTINATION lib/python3/dist-packages COMPONENT python PATTERN "__pycache__" EXCLUDE)
install(DIRECTORY examples/python DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-vemo/examples COMPONENT python
  PATTERN "__pycache__" EXCLUDE)

# Editors: what one looks for by itself is where it looks, the rest where a person can copy it.
set(VEMO_SHARE ${CMAKE_INSTALL_DATADIR})
install(FILES editors/kate/vemo.xml DESTINATION ${VEMO_SHARE}/org.kde.syntax-highlighting/syntax COMPONENT command)
install(DIRECTORY editors/neovim/ DESTINATION ${VEMO_SHARE}/nvim/site COMPONENT command PATTERN README.md EXCLUDE)
install(FILES editors/emacs/vemo-mode.el DESTINATION ${VEMO_SHARE}/emacs/site-lisp COMPONENT command)
install(DIRECTORY editors DESTINATION ${VEMO_SHARE}/vemo COMPONENT command PATTERN *.sh EXCLUDE)
install(DIRECTORY packaging/krunner packaging/rofi DESTINATION ${VEMO_SHARE}/doc/vemo/examples/launchers USE_SOURCE_PERMISSIONS
  COMPONENT command)
file(GLOB VEMO_EXAMPLES CONFIGURE_DEPENDS examples/*.vemo examples/*.json)
install(FILES ${VEMO_EXAMPLES} DESTINATION ${VEMO_SHARE}/doc/vemo/examples COMPONENT command)
install(DIRECTORY examples/extensions DESTINATION ${VEMO_SHARE}/doc/vemo/examples COMPONENT command)
