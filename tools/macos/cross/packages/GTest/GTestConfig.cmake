# The test library as far as compiling goes: the host's headers.
foreach(part gtest gmock gtest_main)
    add_library(GTest::${part} INTERFACE IMPORTED)
endforeach()
# The host's headers lie among those of its C library, which must stay out of sight.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/gtest-headers)
file(CREATE_LINK /usr/include/gtest ${CMAKE_BINARY_DIR}/gtest-headers/gtest SYMBOLIC)
file(CREATE_LINK /usr/include/gmock ${CMAKE_BINARY_DIR}/gtest-headers/gmock SYMBOLIC)
target_include_directories(GTest::gtest SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/gtest-headers)
