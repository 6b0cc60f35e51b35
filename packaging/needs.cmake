# What the package depends on is found in its programs and libraries. What only the displays need is
# recommended: the plug-in and the workbench run without a toolkit.
set(build ${CPACK_QUENLIX_BUILD_FOLDER})
set(work ${build}/packaging/needs)
file(WRITE ${work}/debian/control "Source: tarvo\n\nPackage: tarvo\nArchitecture: any\n")
execute_process(
  COMMAND dpkg-shlibdeps -O -l${build}
    -dDepends ${build}/tarvo ${build}/libCarbon.so ${build}/libCoreFoundation.so
      ${build}/libFMWrapper.so ${build}/tarvo-line-editor.so
      ${build}/Quenlix.fmplugin/Contents/Linux/Quenlix
    -dRecommends ${build}/tarvo-desktop ${build}/tarvo-terminal
  WORKING_DIRECTORY ${work}
  OUTPUT_VARIABLE needs
  ERROR_VARIABLE errors
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${errors}")
endif()
string(REGEX MATCH "shlibs:Depends=([^\n]*)" found "${needs}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS ${CMAKE_MATCH_1})
string(REGEX MATCH "shlibs:Recommends=([^\n]*)" found "${needs}")
# Qt's words in other languages, for the menus of fields.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "${CMAKE_MATCH_1}, qt6-translations-l10n")
