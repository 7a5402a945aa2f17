# Reads src/module/notifier_classes.def and writes what cannot include it: a registry script for each
# class, the type library description, and the resource statements for scripts and icons.

set(NOTIFIER_LIBID "5625C924-5719-DA0E-EE98-237AC5FB0A3C")
set(NOTIFIER_RESOURCE_DIR "${CMAKE_BINARY_DIR}/resources")

set(definition_file "${CMAKE_SOURCE_DIR}/src/module/notifier_classes.def")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${definition_file}")
file(STRINGS "${definition_file}" rows REGEX "^NOTIFIER_CLASS\\(")

set(row_count 0)
set(NOTIFIER_COCLASSES "")
set(resource_statements "")
set(NOTIFIER_ICON_FILES "")
set(NOTIFIER_ICON_SOURCES "")
set(NOTIFIER_SCRIPT_FILES "")
foreach(row IN LISTS rows)
  if(NOT row MATCHES
     "^NOTIFIER_CLASS\\(([A-Za-z]+), \"([-0-9A-F]+)\", ([0-9]+), ([0-9]+), ([a-z_]+), (nullptr|&k[A-Za-z]+WebForm), (true|false)\\)$")
    message(FATAL_ERROR "notifier_classes.def: this row does not have the seven columns: ${row}")
  endif()
  math(EXPR row_count "${row_count} + 1")
  set(CLASS "${CMAKE_MATCH_1}")
  set(CLSID "${CMAKE_MATCH_2}")
  set(script_id "${CMAKE_MATCH_3}")
  set(icon_id "${CMAKE_MATCH_4}")
  set(stem "${CMAKE_MATCH_5}")
  if(CMAKE_MATCH_7)
    set(PROGRAMMABLE "\n            ForceRemove Programmable")
  else()
    set(PROGRAMMABLE "")
  endif()
  configure_file("${CMAKE_SOURCE_DIR}/src/resources/notifier_class.rgs.in"
                 "${NOTIFIER_RESOURCE_DIR}/${stem}.rgs" @ONLY)
  string(APPEND NOTIFIER_COCLASSES
         "    [uuid(${CLSID}), helpstring(\"${CLASS} Class\")]\n    coclass ${CLASS} { };\n")
  string(APPEND resource_statements
         "${script_id} REGISTRY \"${stem}.rgs\"\n${icon_id} ICON \"${stem}.ico\"\n")
  list(APPEND NOTIFIER_ICON_FILES "${NOTIFIER_RESOURCE_DIR}/${stem}.ico")
  list(APPEND NOTIFIER_ICON_SOURCES "${CMAKE_SOURCE_DIR}/src/resources/icons/${stem}.svg")
  list(APPEND NOTIFIER_SCRIPT_FILES "${NOTIFIER_RESOURCE_DIR}/${stem}.rgs")
endforeach()
if(NOT row_count EQUAL 7)
  message(FATAL_ERROR "notifier_classes.def: expected seven classes, found ${row_count}")
endif()

configure_file("${CMAKE_SOURCE_DIR}/src/resources/type_library.idl.in"
               "${NOTIFIER_RESOURCE_DIR}/type_library.idl" @ONLY)
file(CONFIGURE OUTPUT "${NOTIFIER_RESOURCE_DIR}/notifier_classes.rc" CONTENT "${resource_statements}")
