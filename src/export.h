// SPDX-License-Identifier: MIT
// Marks what the shared library shows to other programs; everything else in it is hidden.
//
// A program can use exactly what the public headers (src/public_headers.cmake) declare with the
// first of these. Macros, because C++ has no other way to give an attribute a name.
#pragma once

// A class or a function of the public interface.
#define CRADLE_CONFIG_API [[gnu::visibility("default")]]

// A member of such a class that is not part of it.
#define CRADLE_CONFIG_LOCAL [[gnu::visibility("hidden")]]
