#include "entry/library_classes.h"

#include "core/appearance.h"
#include "core/resources.h"
#include "core/settings.h"
#include "icons/icon_store.h"
#include "panel/actions_bar_view.h"
#include "panel/redirect_app_selector.h"
#include "panel/section_header_views.h"
#include "panel/window/panel_window.h"
#include "panel/window/presentation_animator.h"
#include "panel/window/presentation_configuration.h"
#include "panel/window/presentation_controller.h"
#include "panel/window/presentation_manager.h"
#include "record/allocated_size.h"
#include "record/app_ledger.h"
#include "state/custom_toast_view.h"

namespace appledger {

using namespace platform;

namespace {

// clang-format off
constexpr const ClassDefinition* classes[] {
    // sorted
    &ALActionButton_class,
    &ALActionsBarView_class,
    &ALAppLedger::definition,
    &ALAppLedgerGroup::definition,
    &ALAppearance::definition,
    &ALDataPresentationAnimator::definition,
    &ALDataPresentationConfiguration::definition,
    &ALDataPresentationController_class,
    &ALDataPresentationManager::definition,
    &ALExpandableSectionHeaderView_class,
    &ALHelper::definition,
    &ALIconStore::definition,
    &ALPanelWindow_class,
    &ALRedirectAppSelector_class,
    &ALSettings::definition,
    &ALTitleSectionHeaderView_class,
    &CustomToastView_class,
    // end sorted
};
// clang-format on

} // namespace

void registerLibraryClasses()
{
    for (const ClassDefinition* definition : classes)
        registerClass(*definition);
    addAllocatedSize();
}

} // namespace appledger
