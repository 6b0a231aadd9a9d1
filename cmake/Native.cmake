# The rule files include no Windows header, so they compile here, where the sanitizers can reach them. What a directory
# asks for counts for the targets that come behind it.
add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
add_link_options(-fsanitize=address,undefined)
if(FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link -O1)
endif()

add_library(rules STATIC)
file(STRINGS ${CMAKE_SOURCE_DIR}/cmake/RuleFiles.txt rule_files REGEX "^[^#]")
list(TRANSFORM rule_files PREPEND ${CMAKE_SOURCE_DIR}/)
target_sources(rules PRIVATE ${rule_files})
foreach(room framework util presets inventory layouts studio console app res)
    target_include_directories(rules PUBLIC ${CMAKE_SOURCE_DIR}/${room})
endforeach()
target_link_libraries(rules PUBLIC warnings)

if(FUZZ)
    add_subdirectory(tests/fuzz)
else()
    add_subdirectory(tests)
endif()
