#pragma once

/// @def VELMORA_API
/// Marks what the shared library VelmoraTessaport exports.

#if defined(VELMORA_STATIC)
#define VELMORA_API
#elif defined(_WIN32)
#if defined(VELMORA_BUILDING_LIBRARY)
#define VELMORA_API __declspec(dllexport)
#else
#define VELMORA_API __declspec(dllimport)
#endif
#else
#define VELMORA_API __attribute__((visibility("default")))
#endif
