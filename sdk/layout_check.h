// Compile-time checks that a record has the host's binary layout.
#pragma once

#include <cstddef>

#define NEVREL_CHECK_RECORD(Type, size, align)               \
    static_assert(sizeof(Type) == (size), "size of " #Type); \
    static_assert(alignof(Type) == (align), "alignment of " #Type)

#define NEVREL_CHECK_FIELD(Type, field, offset) \
    static_assert(offsetof(Type, field) == (offset), "offset of " #Type "::" #field)
