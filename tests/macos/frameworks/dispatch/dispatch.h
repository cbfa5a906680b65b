// Dispatch queues: what the macOS desktop uses of their public interface, declared from its documentation.
#pragma once

#include <stdint.h>

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef void (^dispatch_block_t)(void);
typedef uint64_t dispatch_time_t;

#define NSEC_PER_SEC 1000000000ULL
#define NSEC_PER_MSEC 1000000ULL
#define DISPATCH_TIME_NOW (0ULL)

#if defined(__cplusplus)
extern "C" {
#endif

/// The main queue is an object that the library exports, not a function.
extern struct dispatch_queue_s _dispatch_main_q;
#define dispatch_get_main_queue() (&_dispatch_main_q)

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
void dispatch_async(dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);

#if defined(__cplusplus)
}
#endif
