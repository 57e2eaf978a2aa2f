// Symbol visibility. Everything in the libraries is hidden unless it is marked with one of these.
#pragma once

#if defined(_WIN32)
#if defined(CORVANE_BUILD)
#define CORVANE_API __declspec(dllexport)
#else
#define CORVANE_API __declspec(dllimport)
#endif
#if defined(NUMELO_BUILD)
#define NUMELO_API __declspec(dllexport)
#else
#define NUMELO_API __declspec(dllimport)
#endif
#define CORVANE_PLUGIN_API __declspec(dllexport)
#else
#define CORVANE_API __attribute__((visibility("default")))
#define NUMELO_API __attribute__((visibility("default")))
#define CORVANE_PLUGIN_API __attribute__((visibility("default")))
#endif
