#import "gnu_peer.h"

#include <objc/Object.h>
#include <objc/runtime.h>
#include <stdio.h>

@interface Peer : Object {
    long volume;
}
- (long)volume;
@end

@implementation Peer
- (long)volume
{
    return volume;
}
@end

@interface CrowdedPeer : Peer
@end

@implementation CrowdedPeer
- (long)volume
{
    return volume;
}
@end

static long other(id self, SEL selector)
{
    (void)self;
    (void)selector;
    return 0;
}

void* gnuPeerObject(int crowded)
{
    Class cls = crowded ? objc_getClass("CrowdedPeer") : objc_getClass("Peer");
    if (crowded) {
        for (int i = 0; i < 200; ++i) {
            char name[32];
            snprintf(name, sizeof name, "other%d", i);
            class_addMethod(cls, sel_registerName(name), (IMP)other, "q@:");
        }
    }
    return class_createInstance(cls, 0);
}

long gnuPeerSendVolume(void* object, size_t times)
{
    Peer* const peer = (Peer*)object;
    long sum = 0;
    for (size_t i = 0; i < times; ++i)
        sum += [peer volume];
    return sum;
}
