// The part of the kernel's own interface that IOKit's declarations need, declared by hand.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef int kern_return_t;
typedef unsigned int mach_port_t;
typedef mach_port_t task_port_t;

extern mach_port_t mach_task_self_;
#define mach_task_self() mach_task_self_

#ifdef __cplusplus
}
#endif
