#pragma once

typedef struct PlayedQueue *dispatch_queue_t;

#ifdef __cplusplus
extern "C"
#endif
    dispatch_queue_t
    dispatch_get_main_queue(void);
