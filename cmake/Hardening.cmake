# What makes a fault in this code harder to use: on for every target and every way to build that
# optimises. Each is left out where the compiler doesn't know it.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

set(hardening
  -fstack-protector-strong           # a function that returns to where a buffer has overflowed ends
  -fstack-clash-protection)          # a large frame can't leap over the page that guards the stack
# Jumps and returns go where the compiler meant them to.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
  list(APPEND hardening -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
  list(APPEND hardening -mbranch-protection=standard)
endif()
foreach(flag ${hardening})
  string(MAKE_C_IDENTIFIER "PRISMAL_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    target_compile_options(prismal_options INTERFACE ${flag})
  endif()
endforeach()

# Buffers whose size the compiler knows are not written beyond. It takes an optimising compiler, and
# the address sanitizer watches the same calls better.
if(NOT PRISMAL_SANITIZE AND NOT PRISMAL_FUZZ)
  target_compile_options(prismal_options INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
endif()

# Tables of addresses are read-only before the first line of ours runs.
target_link_options(prismal_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
