// Marks what the reference log library exports.
#pragma once

#if defined(_WIN32)
#if defined(ZENTAR_LOG_BUILDING)
#define ZENTAR_LOG_EXPORT __declspec(dllexport)
#else
#define ZENTAR_LOG_EXPORT __declspec(dllimport)
#endif
#else
#define ZENTAR_LOG_EXPORT __attribute__((visibility("default")))
#endif
