# For find_package(BrantelNotifications): what a host of Brantel_Notifications is compiled and linked with. The
# module itself is not linked; the system loads it by its registration.
#
#   Brantel::notifier_contract    brantel/notifier_contract.h, for C++17 or later
#   Brantel::notifier_contract_c  brantel/notifier_contract_c.h, made of the IDL, for C and C++
get_filename_component(brantel_folder "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

if(NOT TARGET Brantel::notifier_contract)
  add_library(Brantel::notifier_contract INTERFACE IMPORTED)
  set_target_properties(Brantel::notifier_contract PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${brantel_folder}/include"
    INTERFACE_COMPILE_FEATURES cxx_std_17
    INTERFACE_LINK_LIBRARIES "ole32;oleaut32;uuid;shell32")

  add_library(Brantel::notifier_contract_c INTERFACE IMPORTED)
  set_target_properties(Brantel::notifier_contract_c PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${brantel_folder}/include"
    INTERFACE_SOURCES "${brantel_folder}/include/brantel/notifier_contract_i.c"
    INTERFACE_LINK_LIBRARIES "ole32;oleaut32;uuid;shell32")
endif()
unset(brantel_folder)
