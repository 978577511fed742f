// Marks what the shared libraries export; everything else is hidden.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define QUOR_GJF_API __attribute__((visibility("default")))
#else
#define QUOR_GJF_API
#endif
