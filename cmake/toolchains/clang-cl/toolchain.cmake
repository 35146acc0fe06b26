# clang-cl for Windows by Microsoft's ABI, on Debian: libc++'s headers, wine's C headers, and what these lack.
# Packages: clang-19 clang-tools-19 lld-19 llvm-19 libc++-19-dev libwine-dev
# It compiles, archives, and links the DLL for its table of exports. Nothing runs, since there is no C runtime.
#   cmake --toolchain cmake/toolchains/clang-cl/toolchain.cmake -D WINDOWS_ARCH=x64|x86|arm64 ...
set(CMAKE_SYSTEM_NAME Windows)
set(WINDOWS_ARCH x64 CACHE STRING "x64, x86 or arm64")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES WINDOWS_ARCH)
if(WINDOWS_ARCH STREQUAL x64)
  set(CMAKE_SYSTEM_PROCESSOR AMD64)
  set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
elseif(WINDOWS_ARCH STREQUAL x86)
  set(CMAKE_SYSTEM_PROCESSOR X86)
  set(CMAKE_CXX_COMPILER_TARGET i686-pc-windows-msvc)
else()
  set(CMAKE_SYSTEM_PROCESSOR ARM64)
  set(CMAKE_CXX_COMPILER_TARGET aarch64-pc-windows-msvc)
endif()
set(CMAKE_CXX_COMPILER clang-cl-19)
set(CMAKE_LINKER lld-link-19)
set(CMAKE_AR llvm-lib-19)
set(CMAKE_MT true)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_HAVE_PTHREADS_CREATE FALSE)  # without a link the test of it proves nothing
set(CMAKE_HAVE_PTHREAD_CREATE FALSE)
# The DLL has its exports and lacks what it imports; gdi32.lib is an empty archive.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "/force:unresolved /nodefaultlib /noentry /manifest:no")
set(CMAKE_CXX_STANDARD_LIBRARIES "" CACHE STRING "")
file(WRITE ${CMAKE_BINARY_DIR}/gdi32.lib "!<arch>\n")
string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " \"/libpath:${CMAKE_BINARY_DIR}\"")
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_CURRENT_LIST_DIR})  # headers of the viewer's libraries

set(llvm /usr/lib/llvm-19)
set(includes ${CMAKE_CURRENT_LIST_DIR} ${llvm}/include/c++/v1 ${llvm}/lib/clang/19/include
             /usr/include/wine/wine/msvcrt /usr/include/wine/wine/windows)
set(flags "/EHsc /Zc:threadSafeInit- /X -nobuiltininc -D_UCRT -DWINE_UNICODE_NATIVE \"/FI${CMAKE_CURRENT_LIST_DIR}/shim.h\"")
foreach(folder IN LISTS includes)
  string(APPEND flags " -imsvc \"${folder}\"")
endforeach()
# wine's headers declare as functions what clang has built in.
set(renamed InterlockedCompareExchange128)
if(WINDOWS_ARCH STREQUAL x86)
  list(APPEND renamed InterlockedXor64 InterlockedOr64 InterlockedDecrement64 InterlockedIncrement64
              InterlockedExchangePointer InterlockedExchangeAdd64 InterlockedCompareExchangePointer InterlockedAnd64
              InterlockedExchange64)
endif()
foreach(name IN LISTS renamed)
  string(APPEND flags " -D_${name}=wine_${name}")
endforeach()
# As cl, which warns of a size_t that is cut.
set(CMAKE_CXX_FLAGS_INIT "${flags} -Wshorten-64-to-32")
