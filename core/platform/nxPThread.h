#pragma once

/// @file
/// POSIX threads and semaphores: the one header through which the rest of the library reaches them.

#include <pthread.h>
#include <semaphore.h>
