# The Windows program: one static library per room, each with an include folder of its own. A room links the
# rooms to its right only, so an include in the wrong direction does not compile.
#
#     app, console -> studio -> layouts -> inventory -> presets -> util -> framework

add_library(windows_settings INTERFACE)
target_link_libraries(windows_settings INTERFACE warnings)
target_compile_definitions(windows_settings INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT WINVER=0x0A00 _WIN32_WINNT=0x0A00 _GLIBCXX_ASSERTIONS)
target_compile_options(windows_settings INTERFACE -fstack-protector-strong)
target_link_options(windows_settings INTERFACE -fstack-protector-strong)
# Shown to Windows as a program of today's, and shielded as far as this compiler can. It has no control flow guard, and
# its checked memory functions would guard three calls, whose sizes are right by construction.
target_link_options(windows_settings INTERFACE
    -Wl,--major-subsystem-version=10,--minor-subsystem-version=0
    -Wl,--dynamicbase,--high-entropy-va,--nxcompat,--tsaware)
# The same sources give the same bytes whenever they are built.
target_link_options(windows_settings INTERFACE -Wl,--no-insert-timestamp)
# Only the resource ids: any room may name a control or a text.
target_include_directories(windows_settings INTERFACE ${CMAKE_SOURCE_DIR}/res)

function(add_room name)
    cmake_parse_arguments(ROOM "" "" "NEXT;LIBRARIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${name}/*.cpp ${CMAKE_SOURCE_DIR}/${name}/*.h)
    list(FILTER sources EXCLUDE REGEX "/(app|console)/Main\\.cpp$")
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/${name})
    target_link_libraries(${name} PUBLIC windows_settings ${ROOM_NEXT} ${ROOM_LIBRARIES})
endfunction()

add_room(framework LIBRARIES comctl32 comdlg32 shlwapi advapi32 user32 gdi32)
add_room(util      NEXT framework LIBRARIES ole32 oleaut32 uuid)
add_room(presets   NEXT util)
add_room(inventory NEXT presets LIBRARIES strmiids dmoguids)
add_room(layouts   NEXT inventory)
add_room(studio    NEXT layouts)
add_room(console   NEXT studio)
add_room(app       NEXT studio)

# With every build, because the last commit changes without a new configuration.
set(generated ${CMAKE_BINARY_DIR}/generated)
add_custom_target(version_header
    COMMAND ${CMAKE_COMMAND} -D SOURCE=${CMAKE_SOURCE_DIR} -D PROJECT_VERSION=${PROJECT_VERSION}
        -D HEADER=${generated}/Version.h -P ${CMAKE_SOURCE_DIR}/cmake/WriteVersionHeader.cmake
    BYPRODUCTS ${generated}/Version.h
    VERBATIM)
foreach(room app console)
    add_dependencies(${room} version_header)
    target_include_directories(${room} PUBLIC ${generated})
endforeach()

# Objects, not a library: a linker takes resources from a library only when something asks for them by name.
# Texts that the list of languages does not name would be built, but neither shown nor tested.
file(STRINGS ${CMAKE_SOURCE_DIR}/res/Languages.inc language_scripts ENCODING UTF-8 REGEX "^INTERFACE_LANGUAGE")
list(TRANSFORM language_scripts REPLACE ".*\\(([A-Za-z]+),.*" "${CMAKE_SOURCE_DIR}/res/\\1.rc")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/res/Languages.inc)
file(GLOB resource_scripts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/res/*.rc)
set(unlisted_scripts ${resource_scripts})
list(REMOVE_ITEM unlisted_scripts ${CMAKE_SOURCE_DIR}/res/PluginManager.rc
    ${CMAKE_SOURCE_DIR}/res/PluginManagerCmd.rc ${language_scripts})
if(unlisted_scripts)
    message(FATAL_ERROR "res/Languages.inc lacks the language of ${unlisted_scripts}")
endif()
file(GLOB_RECURSE resource_parts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/res/*)
configure_file(${CMAKE_SOURCE_DIR}/res/PluginManager.manifest.in ${generated}/PluginManager.manifest @ONLY)
list(APPEND resource_parts ${generated}/PluginManager.manifest)
set_source_files_properties(${resource_scripts} PROPERTIES OBJECT_DEPENDS "${resource_parts}")
add_library(resources OBJECT ${CMAKE_SOURCE_DIR}/res/PluginManager.rc ${language_scripts})
add_library(console_resources OBJECT ${CMAKE_SOURCE_DIR}/res/PluginManagerCmd.rc ${language_scripts})
string(REPLACE "." "," version_numbers ${PROJECT_VERSION})
foreach(library resources console_resources)
    target_include_directories(${library} PRIVATE ${CMAKE_SOURCE_DIR}/res ${generated})
    target_compile_definitions(${library} PRIVATE APP_VERSION=${PROJECT_VERSION} APP_VERSION_NUMBERS=${version_numbers})
endforeach()

add_executable(PluginManager WIN32 app/Main.cpp)
target_link_libraries(PluginManager PRIVATE app resources)
add_executable(PluginManagerCmd console/Main.cpp)
target_link_libraries(PluginManagerCmd PRIVATE console console_resources)
# The bill of materials is made from the maps.
foreach(program PluginManager PluginManagerCmd)
    target_link_options(${program} PRIVATE -municode -s -Wl,-Map=${CMAKE_BINARY_DIR}/${program}.map)
endforeach()
# The about box opens it; it lies beside the program.
configure_file(${CMAKE_SOURCE_DIR}/LICENSE ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/PluginManager-LICENSE.txt @ONLY NEWLINE_STYLE DOS)

add_subdirectory(samples)
add_subdirectory(tests)
add_subdirectory(bench)
