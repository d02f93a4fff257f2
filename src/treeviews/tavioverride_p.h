// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVIOVERRIDE_P_H
#define TREEVIEWS_TAVIOVERRIDE_P_H

/// @file
/// Whether a class has overridden a virtual operation.

/// Defines `static bool name(const Class *object)`: true unless the object runs the code of @a Class itself for the
/// virtual operation @a operation, which must have no overloads there.
///
/// The tree stack has short ways that give what the public operations give as long as nobody has replaced them. g++
/// tells by one look into the table of virtual operations (its documented extension for bound member functions).
/// Another compiler gets true: the short ways are then not taken, and nothing else changes.
#if defined(__GNUC__) && !defined(__clang__)
#define TAVI_DEFINE_OVERRIDES(name, Class, operation)                                                                \
    _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wpmf-conversions\"")                           \
        _Pragma("GCC diagnostic ignored \"-Wpedantic\"") static inline bool                                          \
        name(const Class *object)                                                                                    \
    {                                                                                                                \
        using Code = void (*)();                                                                                     \
        return reinterpret_cast<Code>(const_cast<Class *>(object)->*(&Class::operation))                             \
               != reinterpret_cast<Code>(&Class::operation);                                                         \
    }                                                                                                                \
    _Pragma("GCC diagnostic pop")
#else
#define TAVI_DEFINE_OVERRIDES(name, Class, operation)                                                                \
    static inline bool name(const Class *)                                                                           \
    {                                                                                                                \
        return true;                                                                                                 \
    }
#endif

#endif
