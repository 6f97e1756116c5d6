#pragma once

// The system's headers, without what would clash with our names.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef NOGDI
#define NOGDI
#endif

// This one first: the others lean on it.
#include <windows.h>

#include <dispex.h>
#include <oaidl.h>
#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>

#undef interface
#undef small
#undef near
#undef far
#undef Yield
