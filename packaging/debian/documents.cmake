# Run by cpack for what it has installed of each component, before that is packed: what every Debian package has beside
# its own files.
if(NOT CPACK_GENERATOR STREQUAL DEB)
  return()
endif()
file(READ "${CPACK_VEMO_SOURCE}/LICENSE" license)
string(REGEX REPLACE "^[^\n]*\n\n(Copyright \\(c\\) )([^\n]*)\n\n" "" text "${license}")
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" ignored "${license}")
set(holder "${CMAKE_MATCH_1}")
string(REGEX REPLACE "\n+$" "" text "${text}")
string(REPLACE "\n\n" "\n.\n" text "${text}")
string(REPLACE "\n" "\n " text "${text}")
set(copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: vemo

Files: *
Copyright: ${holder}
License: Expat
 ${text}
")

# The newest entry of the changes, as Debian has it.
file(READ "${CPACK_VEMO_SOURCE}/CHANGELOG.md" changes)
string(REGEX MATCH "\n## ([0-9.]+), ([^\n]+)" heading "${changes}")
if(NOT "${CMAKE_MATCH_1}" STREQUAL "${CPACK_PACKAGE_VERSION}")
  message(FATAL_ERROR "CHANGELOG.md begins with ${CMAKE_MATCH_1}, and the version is ${CPACK_PACKAGE_VERSION}")
endif()
execute_process(COMMAND date -u -R -d "${CMAKE_MATCH_2}" OUTPUT_VARIABLE day OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)
set(debianChanges "vemo (${CPACK_VEMO_VERSION}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}: see changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${day}
")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share")
  set(documents "${root}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  file(WRITE "${documents}/copyright" "${copyright}")
  file(WRITE "${documents}/changelog" "${changes}")
  file(WRITE "${documents}/changelog.Debian" "${debianChanges}")
  file(GLOB packed "${root}/man/man*/*.[0-9]" "${documents}/changelog*")
  execute_process(COMMAND gzip -9nf ${packed} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND chmod -R u=rwX,go=rX "${CPACK_TEMPORARY_DIRECTORY}/${component}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
