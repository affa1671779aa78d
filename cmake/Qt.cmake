# Which Qt everything is built with: 5, unless -DHX_QT=6 asks for 6. A project around this one that has
# chosen already is followed: two majors do not live in one process.

set(defaultQt 5)
if(TARGET Qt6::Core AND NOT TARGET Qt5::Core)
  set(defaultQt 6)
endif()
hx_option(HX_QT ${defaultQt} "Major version of Qt: 5 or 6")
if(NOT HX_QT MATCHES "^[56]$")
  message(FATAL_ERROR "HX_QT is \"${HX_QT}\". Expected: 5 (Qt 5.12 to 5.15) or 6 (Qt 6.4 or newer).")
endif()

# The oldest that is built with, what Debian's packages are called, and the modules that 6 has moved.
if(HX_QT EQUAL 5)
  set(HX_QT_VERSION 5.12)
  set(HX_QT_SUFFIX "")
  set(HX_QT_CORE Core)
  set(HX_QT_SVG Svg)
  set(corePackages "qtbase5-dev")
  set(windowPackages "qtbase5-dev libqt5svg5-dev")
  set(HX_QT_TRANSLATION_PACKAGE qttools5-dev-tools)
else()
  set(HX_QT_VERSION 6.4)
  set(HX_QT_SUFFIX -qt6) # of what is installed, so that both majors find room beside each other
  set(HX_QT_CORE Core Core5Compat) # QRegExp
  set(HX_QT_SVG SvgWidgets)
  set(corePackages "qt6-base-dev qt6-5compat-dev")
  set(windowPackages "qt6-base-dev qt6-svg-dev")
  set(HX_QT_TRANSLATION_PACKAGE qt6-l10n-tools)
endif()

# Not by the names without a number, which Qt has from 5.15 on: Qt${QT_VERSION_MAJOR}::Core.
hx_find_package(Qt${HX_QT} "${corePackages}" ${HX_QT_VERSION} COMPONENTS ${HX_QT_CORE})
find_package(QT NAMES Qt${HX_QT} ${HX_QT_VERSION} REQUIRED COMPONENTS Core) # QT_VERSION_MAJOR
if(HX_HAS_APPS)
  hx_find_package(Qt${HX_QT} "${windowPackages}" ${HX_QT_VERSION} COMPONENTS DBus ${HX_QT_SVG} Widgets)
endif()
list(TRANSFORM HX_QT_CORE REPLACE "(.+)" "Qt${QT_VERSION_MAJOR}\\1 >= ${HX_QT_VERSION}"
  OUTPUT_VARIABLE HX_QT_PKGCONFIG)
list(TRANSFORM HX_QT_CORE PREPEND Qt${QT_VERSION_MAJOR}::)
list(TRANSFORM HX_QT_SVG PREPEND Qt${QT_VERSION_MAJOR}::)
