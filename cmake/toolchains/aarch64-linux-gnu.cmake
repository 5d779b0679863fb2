# SPDX-License-Identifier: Apache-2.0
# Builds for 64-bit Arm on a Debian machine with the arm64 packages beside its own. Code generators
# (moc, rcc, lrelease) stay native; tests run under user-mode emulation.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)
# Without -L: the libraries of the arm64 packages stand where the loader looks for them.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static)
