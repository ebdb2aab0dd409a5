# The toolkit as far as compiling goes: the host's headers and tools, and no libraries.
execute_process(COMMAND uname -m OUTPUT_VARIABLE machine OUTPUT_STRIP_TRAILING_WHITESPACE)
set(qt_headers /usr/include/${machine}-linux-gnu/qt6)

foreach(module Core Gui Widgets Svg)
    add_library(Qt6::${module} INTERFACE IMPORTED)
    string(TOUPPER ${module} upper)
    target_compile_definitions(Qt6::${module} INTERFACE QT_${upper}_LIB)
    target_include_directories(Qt6::${module} SYSTEM INTERFACE ${qt_headers} ${qt_headers}/Qt${module})
endforeach()
target_link_libraries(Qt6::Gui INTERFACE Qt6::Core)
target_link_libraries(Qt6::Widgets INTERFACE Qt6::Gui)
target_link_libraries(Qt6::Svg INTERFACE Qt6::Gui)

# qt_add_resources(target name PREFIX p BASE b [OPTIONS o...] FILES f...)
function(qt_add_resources target name)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "PREFIX;BASE" "OPTIONS;FILES")
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${name}.qrc)
    set(content "<RCC><qresource prefix=\"${arg_PREFIX}\">\n")
    foreach(file ${arg_FILES})
        file(RELATIVE_PATH alias ${arg_BASE} ${file})
        string(APPEND content "<file alias=\"${alias}\">${file}</file>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${list} CONTENT "${content}</qresource></RCC>\n" @ONLY)
    add_custom_command(OUTPUT ${name}.cpp
        COMMAND /usr/lib/qt6/libexec/rcc --name ${name} ${arg_OPTIONS} -o ${name}.cpp ${list}
        DEPENDS ${list} ${arg_FILES} VERBATIM)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
endfunction()
