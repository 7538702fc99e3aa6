#include "state/toast.h"

#include "platform/runtime/message.h"
#include "state/custom_toast_view.h"

namespace appledger {

using namespace platform;

void presentToast(const id& title, const id& subtitle, const id& icon, long autoHide)
{
    const id toast = askObject<"initWithTitle:subtitle:icon:autoHide:">(
        askObject<"alloc">(id(customToastViewClass())), title, subtitle, icon, NSInteger { autoHide });
    ask<"presentToast", void>(toast);
}

} // namespace appledger
