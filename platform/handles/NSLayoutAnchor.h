#pragma once

#include "platform/handles/NSLayoutConstraint.h"

namespace platform {

/// An edge, a centre or a side of a view. The constraints that it makes aren't active yet.
class NSLayoutAnchor : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"NSLayoutAnchor">(); }

    NSLayoutConstraint equalTo(const NSLayoutAnchor& other, CGFloat constant = 0) const
    {
        return call<"constraintEqualToAnchor:constant:", NSLayoutConstraint>(other, constant);
    }
    NSLayoutConstraint equalTo(CGFloat constant) const
    {
        return call<"constraintEqualToConstant:", NSLayoutConstraint>(constant);
    }
    NSLayoutConstraint atLeast(const NSLayoutAnchor& other, CGFloat constant = 0) const
    {
        return call<"constraintGreaterThanOrEqualToAnchor:constant:", NSLayoutConstraint>(other, constant);
    }
    NSLayoutConstraint atMost(const NSLayoutAnchor& other, CGFloat constant = 0) const
    {
        return call<"constraintLessThanOrEqualToAnchor:constant:", NSLayoutConstraint>(other, constant);
    }
};

} // namespace platform
