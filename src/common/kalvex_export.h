// Marks what libkalvex exports.
#pragma once

#if defined(_WIN32)
#if defined(KALVEX_BUILDING)
#define KALVEX_EXPORT __declspec(dllexport)
#else
#define KALVEX_EXPORT __declspec(dllimport)
#endif
#else
#define KALVEX_EXPORT __attribute__((visibility("default")))
#endif
