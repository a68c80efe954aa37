#pragma once

#include <QtGlobal>

#if defined(FIELDBUSCONFIG_LIBRARY)
#define FIELDBUSCONFIG_EXPORT Q_DECL_EXPORT
#else
#define FIELDBUSCONFIG_EXPORT Q_DECL_IMPORT
#endif
