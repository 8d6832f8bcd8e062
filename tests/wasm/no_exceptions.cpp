// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <cstdlib>
#include <typeinfo>

// The C++ runtime that distributions have for WebAssembly can't throw, while everything is compiled as if it
// could: what throws ends the program here, with the exception's class.

extern "C" {

void* __cxa_allocate_exception(std::size_t size) noexcept { return std::malloc(size); }
void __cxa_free_exception(void* exception) noexcept { std::free(exception); }
[[noreturn]] void __cxa_throw(void*, std::type_info* type, void (*)(void*)) {
    std::fprintf(stderr, "Thrown where nothing can be: %s\n", type->name());
    std::abort();
}
[[noreturn]] void __cxa_rethrow() { std::abort(); }
void* __cxa_begin_catch(void* exception) noexcept { return exception; }
void __cxa_end_catch() {}
}
