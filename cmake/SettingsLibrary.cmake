# add_settings_library(NAME FILE.settings OUTPUT file-name-without-ending [STRINGS file.rc...] [PARTIAL])
# A product's settings library: the settings file compiled into resources, and string tables beside them. PARTIAL: the
# library answers some keys only, in front of another one. ${PREFIX} in the settings stands for the product prefix.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
# In the SDK the compiler and its table lie beside this file.
set(UTIL_SETTINGS_TOOLS ${CMAKE_CURRENT_LIST_DIR}/settings)
set(UTIL_KNOWN_KEYS ${UTIL_SETTINGS_TOOLS}/known-keys.tsv)
if(NOT EXISTS ${UTIL_SETTINGS_TOOLS})
  cmake_path(SET UTIL_SETTINGS_TOOLS NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../tools/settings)
  cmake_path(SET UTIL_KNOWN_KEYS NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../src/settings/known-keys.tsv)
endif()

function(add_settings_library name settings)
  cmake_parse_arguments(PARSE_ARGV 2 arg "PARTIAL" "OUTPUT" "STRINGS")
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
  cmake_path(ABSOLUTE_PATH settings)
  set(partial $<$<BOOL:${arg_PARTIAL}>:--partial>)
  add_custom_command(OUTPUT ${script}
    COMMAND Python3::Interpreter ${UTIL_SETTINGS_TOOLS}/compile_settings.py --keys ${UTIL_KNOWN_KEYS}
            --define PREFIX=${PRODUCT_PREFIX} --output ${script} ${partial} ${settings}
    DEPENDS ${settings} ${UTIL_KNOWN_KEYS} ${UTIL_SETTINGS_TOOLS}/compile_settings.py
            ${UTIL_SETTINGS_TOOLS}/settingsfile.py ${UTIL_SETTINGS_TOOLS}/knownkeys.py
    COMMENT "Settings ${name}" COMMAND_EXPAND_LISTS VERBATIM)
  add_resource_library(${name} ${script} ${arg_STRINGS} OUTPUT ${arg_OUTPUT})
endfunction()
