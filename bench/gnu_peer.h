#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// An object of the GNU Objective-C runtime that answers `volume`; with `crowded`, among 200 other methods.
void* gnuPeerObject(int crowded);

/// Sends `volume` as the compiler does: objc_msg_lookup and a call. The sum of the answers.
long gnuPeerSendVolume(void* object, size_t times);

#ifdef __cplusplus
}
#endif
