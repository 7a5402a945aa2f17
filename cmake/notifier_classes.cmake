# Reads src/module/notifier_classes.def and the identities of the classes that it lists, and writes what cannot
# include them: a registry script for each class, the type library description, and the resource statements
# for scripts, icons and dialogs. NOTIFIER_CLASS_FOLDERS are the folders of the classes, in their order.

set(NOTIFIER_LIBID "5625C924-5719-DA0E-EE98-237AC5FB0A3C")
set(NOTIFIER_RESOURCE_DIR "${CMAKE_BINARY_DIR}/resources")

# notifier_identity(IDS_FILE NAME RESULT): the value of one of the definitions in a class's header.
function(notifier_identity file name result)
  file(STRINGS "${file}" lines REGEX "^#define ${name} ")
  if(NOT lines MATCHES "^#define ${name} \"?([-0-9A-F]+)\"?$")
    message(FATAL_ERROR "${file}: there is no ${name}")
  endif()
  set(${result} "${CMAKE_MATCH_1}" PARENT_SCOPE)
endfunction()

set(definition_file "${CMAKE_SOURCE_DIR}/src/module/notifier_classes.def")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${definition_file}")
file(STRINGS "${definition_file}" rows REGEX "^NOTIFIER_CLASS\\(")

set(NOTIFIER_CLASS_FOLDERS "")
set(NOTIFIER_COCLASSES "")
set(NOTIFIER_ICON_FILES "")
set(NOTIFIER_ICON_SOURCES "")
set(NOTIFIER_SCRIPT_FILES "")
set(NOTIFIER_DIALOG_FILES "")
set(resource_statements "")
foreach(row IN LISTS rows)
  if(NOT row MATCHES "^NOTIFIER_CLASS\\(([A-Za-z]+), ([a-z_]+)\\)$")
    message(FATAL_ERROR "notifier_classes.def: this row does not name a class and its folder: ${row}")
  endif()
  set(CLASS "${CMAKE_MATCH_1}")
  set(folder "${CMAKE_MATCH_2}")
  string(TOUPPER "${folder}" prefix)
  set(ids_file "${CMAKE_SOURCE_DIR}/src/${folder}/${folder}_ids.h")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${ids_file}")
  notifier_identity("${ids_file}" "${prefix}_CLSID" CLSID)
  notifier_identity("${ids_file}" "${prefix}_REGISTRY_SCRIPT" script_id)
  notifier_identity("${ids_file}" "${prefix}_ICON" icon_id)
  notifier_identity("${ids_file}" "${prefix}_PROGRAMMABLE" is_programmable)
  if(is_programmable)
    set(PROGRAMMABLE "\n            ForceRemove Programmable")
  else()
    set(PROGRAMMABLE "")
  endif()
  configure_file("${CMAKE_SOURCE_DIR}/src/resources/notifier_class.rgs.in"
                 "${NOTIFIER_RESOURCE_DIR}/${folder}.rgs" @ONLY)
  string(APPEND NOTIFIER_COCLASSES
         "    [uuid(${CLSID}), helpstring(\"${CLASS} Class\")]\n    coclass ${CLASS} { };\n")
  string(APPEND resource_statements
         "${script_id} REGISTRY \"${folder}.rgs\"\n${icon_id} ICON \"${folder}.ico\"\n")
  file(GLOB dialogs CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${folder}/*.dlg")
  foreach(dialog IN LISTS dialogs)
    string(APPEND resource_statements "#include \"${dialog}\"\n")
  endforeach()
  list(APPEND NOTIFIER_CLASS_FOLDERS "${folder}")
  list(APPEND NOTIFIER_ICON_FILES "${NOTIFIER_RESOURCE_DIR}/${folder}.ico")
  list(APPEND NOTIFIER_ICON_SOURCES "${CMAKE_SOURCE_DIR}/src/${folder}/${folder}.svg")
  list(APPEND NOTIFIER_SCRIPT_FILES "${NOTIFIER_RESOURCE_DIR}/${folder}.rgs")
  list(APPEND NOTIFIER_DIALOG_FILES ${dialogs} "${ids_file}")
endforeach()

configure_file("${CMAKE_SOURCE_DIR}/src/resources/type_library.idl.in"
               "${NOTIFIER_RESOURCE_DIR}/type_library.idl" @ONLY)
file(CONFIGURE OUTPUT "${NOTIFIER_RESOURCE_DIR}/notifier_classes.rc" CONTENT "${resource_statements}")
