# Takes the macOS branch of the build on Linux: clang for arm64 macOS over the declarations in ../sdk, libc++'s own
# headers, and musl's as the C library's. What is linked resolves the system's symbols against the lists in stubs/.
# The toolkit is not here; its symbols stay open.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_OSX_SYSROOT "")
set(CMAKE_OSX_ARCHITECTURES "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(llvm /usr/lib/llvm-19)
foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER ${llvm}/bin/clang++)
    set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos)
endforeach()
set(CMAKE_C_COMPILER ${llvm}/bin/clang)
set(CMAKE_AR ${llvm}/bin/llvm-ar)
set(CMAKE_RANLIB ${llvm}/bin/llvm-ranlib)
set(CMAKE_INSTALL_NAME_TOOL ${llvm}/bin/llvm-install-name-tool)

execute_process(COMMAND uname -m OUTPUT_VARIABLE machine OUTPUT_STRIP_TRAILING_WHITESPACE)
set(sdk ${CMAKE_CURRENT_LIST_DIR}/../sdk)
# musl without its GNU extensions, such as pipe2 and environ, and without the headers that only Linux has: what a Mac
# lacks must not compile here either.
set(linux_only ${CMAKE_BINARY_DIR}/linux-only)
foreach(header malloc prctl sys/epoll sys/eventfd sys/inotify sys/prctl sys/sendfile sys/signalfd sys/sysinfo sys/timerfd)
    file(CONFIGURE OUTPUT ${linux_only}/${header}.h CONTENT "#error macOS has no <${header}.h>\n")
endforeach()
string(JOIN " " headers
    -nostdinc -D_BSD_SOURCE
    -isystem ${linux_only}
    -isystem ${llvm}/include/c++/v1
    -isystem ${llvm}/lib/clang/19/include
    -isystem ${sdk}/libc
    -isystem /usr/include/${machine}-linux-musl
    -isystem ${sdk}/include)
set(CMAKE_C_FLAGS_INIT "${headers}")
set(CMAKE_CXX_FLAGS_INIT "${headers}")
set(CMAKE_OBJCXX_FLAGS_INIT "${headers} -fblocks")
string(JOIN " " CMAKE_EXE_LINKER_FLAGS_INIT
    -fuse-ld=lld -nostdlib -Wl,-syslibroot,${CMAKE_CURRENT_LIST_DIR}/stubs/root
    -lSystem -lc++ -lobjc -Wl,-undefined,dynamic_lookup)

# The toolkit's headers are the host's; they read as macOS's.
set(GTest_DIR ${CMAKE_CURRENT_LIST_DIR}/packages/GTest)
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST) # nothing of this runs here
set(Qt6_DIR ${CMAKE_CURRENT_LIST_DIR}/packages/Qt6)
