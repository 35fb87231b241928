#pragma once

/// Marks a class or function as part of the library's binary interface. Everything else in the
/// shared library has hidden visibility.
#define TAVIX_API __attribute__((visibility("default")))
