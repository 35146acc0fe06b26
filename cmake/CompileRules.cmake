# The compile rules of all targets of this project.

# Language, warnings and strict arithmetic. A fused multiply-add or a reordered sum changes the last places
# of a position, so contraction and fast-math stay off, whatever the caller's flags are.
function(zellap10_compile_rules target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(MSVC)
    # Under /fp:precise clang-cl contracts, and so does cl before 19.30.
    set(arithmetic /fp:precise)
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
      list(APPEND arithmetic /clang:-ffp-contract=off)
    elseif(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 19.30)
      set(arithmetic /fp:strict)
    endif()
    target_compile_options(${target} PRIVATE ${arithmetic} /W4 /permissive- /utf-8)
    target_compile_options(${target} PRIVATE $<$<BOOL:${ZELLAP10_WARNINGS_AS_ERRORS}>:/WX>)
    target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS _CRT_NONSTDC_NO_WARNINGS)
    return()
  endif()
  target_compile_options(${target} PRIVATE -fno-fast-math -ffp-contract=off)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
  endif()
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  target_compile_options(${target} PRIVATE $<$<BOOL:${ZELLAP10_WARNINGS_AS_ERRORS}>:-Werror>)
  if(ZELLAP10_SANITIZE)
    # GCC's "undefined" does not include the cast of a double that an int cannot hold.
    set(address address,undefined,float-cast-overflow)
    set(thread thread)
    target_compile_options(${target} PRIVATE -fsanitize=${${ZELLAP10_SANITIZE}} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${${ZELLAP10_SANITIZE}})
  endif()
endfunction()

# A static library of Visual C++ has no PDB file that could be installed, so its objects contain the debug information.
function(zellap10_embed_debug_information target)
  set_target_properties(${target} PROPERTIES MSVC_DEBUG_INFORMATION_FORMAT
                                             "$<$<CONFIG:Debug,RelWithDebInfo>:Embedded>")
endfunction()
