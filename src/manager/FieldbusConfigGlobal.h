#pragma once

/// @file
/// The export macro of the library's shared object.

#include <QtGlobal>

#if defined(FIELDBUSCONFIG_LIBRARY)
/// Exports a class or global from the library; only the library's own build defines
/// FIELDBUSCONFIG_LIBRARY.
#define FIELDBUSCONFIG_EXPORT Q_DECL_EXPORT
#else
/// Imports a class or global of the library into the code that uses it.
#define FIELDBUSCONFIG_EXPORT Q_DECL_IMPORT
#endif
