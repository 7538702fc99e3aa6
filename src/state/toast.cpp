#include "state/toast.h"

#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

void presentToast(const id& title, const id& subtitle, const id& icon, long autoHide)
{
    const id allocated = askObject<"alloc">(id(classNamed<"CustomToastView">()));
    const id toast
        = askObject<"initWithTitle:subtitle:icon:autoHide:">(allocated, title, subtitle, icon, NSInteger { autoHide });
    ask<"presentToast", void>(toast);
}

} // namespace appledger
