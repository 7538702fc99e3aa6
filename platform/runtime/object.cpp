#include "platform/runtime/object.h"

#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

#include <vector>

namespace platform {

namespace detail {
void removeAssociations(const NSObject& object);
} // namespace detail

NSObject::~NSObject() = default;

namespace {

// The object goes when every `dealloc` has returned, so that a replacement may still use it after the
// method that it replaced.
void NSObject_dealloc(const id&, SEL) { }

/// How deep this thread stands in objects that go because what held them goes, and, at the greatest depth, those that
/// wait there for their turn.
struct Going {
    unsigned depth = 0;
    std::vector<NSObject*>* waiting = nullptr;
};
thread_local constinit Going goingHere __attribute__((tls_model("initial-exec")));

} // namespace

bool NSObject::retainUnlessGoing() noexcept
{
    std::int32_t count = references_.load(std::memory_order_relaxed);
    while (count > 0)
        if (references_.compare_exchange_weak(count, count + 1, std::memory_order_relaxed))
            return true;
    return count == immortal;
}

void NSObject::deallocate() noexcept
{
    references_.store(going, std::memory_order_relaxed);
    if (weaklyReferenced_.load(std::memory_order_relaxed))
        detail::WeakCell::clear(*this);

    constexpr unsigned greatestDepth = 64;
    Going& here = goingHere;
    if (here.waiting) {
        here.waiting->push_back(this);
        return;
    }
    ++here.depth;
    if (here.depth < greatestDepth) {
        destroy();
    } else {
        std::vector<NSObject*> waiting { this };
        here.waiting = &waiting;
        while (!waiting.empty()) {
            NSObject* const next = waiting.back();
            waiting.pop_back();
            next->destroy();
        }
        here.waiting = nullptr;
    }
    --here.depth;
}

void NSObject::destroy() noexcept
{
    const IMP dealloc = isa_ ? isa_->implementation(selector<"dealloc">(), detail::hashOf<"dealloc">) : nullptr;
    if (dealloc && dealloc != reinterpret_cast<IMP>(&NSObject_dealloc)) {
        const id self(this);
        detail::invoke<void>(dealloc, self, selector<"dealloc">());
    }
    // What goes with them may associate anew, as long as the object is there.
    while (associated_.load(std::memory_order_relaxed)) {
        associated_.store(false, std::memory_order_relaxed);
        detail::removeAssociations(*this);
    }
    delete this;
}

bool isEqual(const id& left, const id& right)
{
    if (left == right)
        return true;
    return left && right && send<"isEqual:", bool>(left, right);
}

namespace {

id NSObject_alloc(const id& self, SEL)
{
    return id::adopt(static_cast<ClassObject&>(*self).allocate());
}

id NSObject_new(const id& self, SEL)
{
    return send<"init">(send<"alloc">(self));
}

id NSObject_self(const id& self, SEL)
{
    return self;
}

Class NSObject_class_(const id& self, SEL)
{
    return self->isa()->isMetaclass() ? static_cast<ClassObject*>(self.get()) : self->isa();
}

bool NSObject_isKindOfClass(const id& self, SEL, Class cls)
{
    return isKindOfClass(self, cls);
}

bool NSObject_respondsToSelector(const id& self, SEL, SEL selector)
{
    return respondsToSelector(self, selector);
}

IMP NSObject_methodForSelector(const id& self, SEL, SEL selector)
{
    return selector ? self->isa()->implementation(selector, selector->hash) : nullptr;
}

bool NSObject_isEqual(const id& self, SEL, const id& other)
{
    return other && self->isEqualTo(*other);
}

NSUInteger NSObject_hash(const id& self, SEL)
{
    return self->hashValue();
}

id NSObject_performSelector(const id& self, SEL, SEL selector)
{
    return sendSelector(self, selector);
}

constexpr MethodDefinition methods[] {
    classMethod<"alloc", &NSObject_alloc>(),
    method<"class", &NSObject_class_>(),
    method<"dealloc", &NSObject_dealloc>(),
    method<"hash", &NSObject_hash>(),
    method<"init", &NSObject_self>(),
    method<"isEqual:", &NSObject_isEqual>(),
    method<"isKindOfClass:", &NSObject_isKindOfClass>(),
    method<"methodForSelector:", &NSObject_methodForSelector>(),
    classMethod<"new", &NSObject_new>(),
    method<"performSelector:", &NSObject_performSelector>(),
    method<"respondsToSelector:", &NSObject_respondsToSelector>(),
    method<"self", &NSObject_self>(),
};

NSObject* allocateObject()
{
    return new NSObject;
}

} // namespace

const ClassDefinition NSObject_class { .name = "NSObject", .allocate = allocateObject, .methods = methods };

} // namespace platform
