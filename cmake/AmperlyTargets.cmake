# How every target of this project is built: the language, the warnings, the sanitizers, each flag beside its reason.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)

find_program(AMPERLY_CCACHE ccache)
if(AMPERLY_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${AMPERLY_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${AMPERLY_CCACHE})
    set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${AMPERLY_CCACHE})
endif()

# What ships is optimised as a whole: less code is touched when a tick wakes the program, which is
# nearly all that a tick costs.
set(CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)

add_library(amperly_options INTERFACE)
target_include_directories(amperly_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(amperly_options INTERFACE
    -Wall -Wextra -Wpedantic
    -Wconversion          # pixel maths quietly losing its fraction
    -Wshadow              # an inner name hiding the one that was meant
    -Wnon-virtual-dtor    # interfaces deleted through their base
    -ffunction-sections -fdata-sections  # what is not used is not mapped at run time
)
if(AMPERLY_WARNINGS_AS_ERRORS)
    # A warning that may stay is a warning nobody reads. Somebody whose compiler is newer than ours reads it and builds.
    target_compile_options(amperly_options INTERFACE -Werror)
endif()
if(CMAKE_SYSTEM_PROCESSOR MATCHES "arm64|aarch64")
    # There a product and a sum become one operation, rounded once instead of twice, wherever the compiler likes. What
    # is drawn and written would depend on it, and exact tests would hold on one processor only.
    target_compile_options(amperly_options INTERFACE -ffp-contract=off)
endif()
# Toolkit slots reached by name only would hide a typing error until run time.
target_compile_definitions(amperly_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
# What any version of the toolkit so far deprecates is not there to be called. 6.4 knows the second macro only.
target_compile_definitions(amperly_options INTERFACE
    QT_DISABLE_DEPRECATED_UP_TO=0x060b00 QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(APPLE)
    target_link_options(amperly_options INTERFACE -Wl,-dead_strip)
else()
    target_link_options(amperly_options INTERFACE -Wl,--gc-sections -Wl,--as-needed)
endif()

if(AMPERLY_SANITIZE)
    target_compile_options(amperly_options INTERFACE
        -fsanitize=${AMPERLY_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(amperly_options INTERFACE -fsanitize=${AMPERLY_SANITIZE})
endif()

# amperly_link(target PUBLIC|PRIVATE ...): links folders by their names, anything else as it is written, and
# builds the target by the rules above.
function(amperly_link target scope)
    list(TRANSFORM ARGN REPLACE "^([a-z0-9_]+)$" "amperly_\\1" OUTPUT_VARIABLE links)
    target_link_libraries(${target} ${scope} amperly_options ${links})
endfunction()

# amperly_library(name SOURCES ... [LINK ...]): one folder, one library, linked by folder name.
function(amperly_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_library(amperly_${name} ${arg_SOURCES})
    amperly_link(amperly_${name} PUBLIC ${arg_LINK})
endfunction()
