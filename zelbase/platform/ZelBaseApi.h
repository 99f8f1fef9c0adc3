// The mark on every exported name. Nothing else belongs here.
#pragma once

#if defined(_WIN32) && defined(ZELBASE_EXPORTS)
#define ZELBASE_API __declspec(dllexport)
#elif defined(_WIN32) && defined(ZELBASE_SHARED)
#define ZELBASE_API __declspec(dllimport)
#elif defined(_WIN32)
#define ZELBASE_API
#else
#define ZELBASE_API __attribute__((visibility("default")))
#endif
