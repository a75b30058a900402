// Export: which names leave the shared library. Everything is hidden unless it carries ZORBASE_API.
#pragma once

#if defined(ZORBASE_STATIC)
#define ZORBASE_API
#elif defined(_WIN32)
#if defined(ZORBASE_BUILDING)
#define ZORBASE_API __declspec(dllexport)
#else
#define ZORBASE_API __declspec(dllimport)
#endif
#else
#define ZORBASE_API __attribute__((visibility("default")))
#endif
