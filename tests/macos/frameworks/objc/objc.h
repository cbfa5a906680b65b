// The types of the Objective-C language: what the macOS desktop uses of their public interface, declared from its documentation.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

typedef struct objc_class* Class;
typedef struct objc_object {
  Class isa;
} * id;
typedef struct objc_selector* SEL;

#if defined(__APPLE__) && !defined(__aarch64__)
typedef signed char BOOL;
#else
typedef bool BOOL;
#endif

#define YES __objc_yes
#define NO __objc_no

#if defined(__cplusplus)
#define nil nullptr
#else
#define nil ((void*)0)
#endif
