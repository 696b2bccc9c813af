# Debian packages and the archive of sources, by cpack. packaging/build.sh makes them.
set(CPACK_PACKAGE_NAME vemo)
set(CPACK_PACKAGE_VENDOR "Vemo contributors")
set(CPACK_PACKAGE_CONTACT "Vemo contributors <contributors@vemo.example>")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL command library development python)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(VEMO_DEBIAN_VERSION "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
# What is loaded when it is needed, and does without otherwise.
set(VEMO_LOADED "libcurl4, libjavascriptcoregtk-4.1-0")

# package(COMPONENT NAME SECTION SUMMARY DESCRIPTION): the rest is set after it.
function(package component name section summary description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
endfunction()

package(command vemo math "calculator for text with one calculation per line"
"The command reads what people write, one calculation per line, and shows
what each line gives: units, money, dates, times, percentages, names and
totals, in five languages. It has a prompt, formats for other programs, and
a language server for editors, whose plug-ins are here as well.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMMAND_PACKAGE_RECOMMENDS "${VEMO_LOADED}")

set(VEMO_LIBRARY_PACKAGE libvemo${PROJECT_VERSION_MAJOR})
package(library ${VEMO_LIBRARY_PACKAGE} libs "calculation engine of a notepad-style calculator"
"The shared library has an interface for C, and for every language that can
call C: text with one calculation per line, and what each line gives, with
decimal numbers of 38 digits.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS "${VEMO_LOADED}")
# What packages need that are linked with it, and that the loader has to look again.
file(WRITE "${PROJECT_BINARY_DIR}/debian/shlibs"
  "libvemo ${PROJECT_VERSION_MAJOR} ${VEMO_LIBRARY_PACKAGE} (>= ${PROJECT_VERSION})\n")
file(WRITE "${PROJECT_BINARY_DIR}/debian/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/debian/shlibs"
  "${PROJECT_BINARY_DIR}/debian/triggers")

package(development libvemo-dev libdevel "calculation engine of a notepad-style calculator, for development"
"The headers for C and C++, the static library with the interface for C++,
and files for CMake and pkg-config.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${VEMO_LIBRARY_PACKAGE} (= ${VEMO_DEBIAN_VERSION}), libicu-dev")

package(python python3-vemo python "calculation engine of a notepad-style calculator, for Python"
"A typed package in pure Python: text with one calculation per line, and
what each line gives, as decimal numbers and instants.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
  "python3:any (>= 3.9), ${VEMO_LIBRARY_PACKAGE} (>= ${PROJECT_VERSION}), tzdata")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/postinst"
  "${PROJECT_SOURCE_DIR}/packaging/debian/prerm")

if(VEMO_BUILD_NOTEPAD)
  list(APPEND CPACK_COMPONENTS_ALL notepad)
  package(notepad vemo-notepad math "notepad that calculates, for the desktop"
"A window with text in which every line is a calculation, and its result
stands beside it as one types.")
  set(CPACK_DEBIAN_NOTEPAD_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_NOTEPAD_PACKAGE_RECOMMENDS "${VEMO_LOADED}")
endif()

# Copyright, changes and packed manual pages are put beside what was installed.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/documents.cmake")
set(CPACK_VEMO_SOURCE "${PROJECT_SOURCE_DIR}")
set(CPACK_VEMO_VERSION "${VEMO_DEBIAN_VERSION}")

set(CPACK_SOURCE_GENERATOR TXZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME vemo-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES "/build/" "/\\.git/" "/__pycache__/" "~$")
include(CPack)
add_custom_target(dist COMMAND "${CMAKE_CPACK_COMMAND}" --config CPackSourceConfig.cmake
  WORKING_DIRECTORY "${PROJECT_BINARY_DIR}" COMMENT "Packing the sources" VERBATIM USES_TERMINAL)
