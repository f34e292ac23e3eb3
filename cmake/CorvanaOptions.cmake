# What every target of ours is compiled and linked with. Targets link corvana_options; nothing sets
# global flags.
include_guard()
include(GNUInstallDirs)

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Precompiled headers only hit the cache when ccache may ignore their time stamps.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
endif()

add_library(corvana_options INTERFACE)
target_compile_features(corvana_options INTERFACE cxx_std_20)
target_include_directories(corvana_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(corvana_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wformat=2 -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wundef
  -fpch-preprocess -Winvalid-pch)
if(CORVANA_WERROR)
  target_compile_options(corvana_options INTERFACE -Werror)
endif()
# char text and QString never convert by themselves: see ui/Convert.h.
target_compile_definitions(corvana_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(CORVANA_SANITIZE)
  target_compile_options(corvana_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(corvana_options INTERFACE -fsanitize=address,undefined)
endif()
if(CORVANA_FUZZ)
  target_compile_options(corvana_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  target_link_options(corvana_options INTERFACE -fsanitize=address,undefined)
endif()
if(CORVANA_HARDEN)
  target_compile_options(corvana_options INTERFACE
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS -fstack-protector-strong
    -fstack-clash-protection -fcf-protection -ftrivial-auto-var-init=zero
    -Werror=format-security)
  target_link_options(corvana_options INTERFACE
    -Wl,-z,relro,-z,now,-z,noexecstack,-z,separate-code)
endif()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported()

find_package(PkgConfig REQUIRED)
