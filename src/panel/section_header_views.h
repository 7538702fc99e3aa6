#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

// Headers of sections, in the colours of the appearance at each layout. Main thread.

/// `ALExpandableSectionHeaderView`: opens and closes its section at a tap, and tells its delegate
/// `expandableSectionHeaderViewDidChange:`; at a long press `expandableSectionHeaderViewDidLongPress:`, if it answers.
extern const platform::ClassDefinition ALExpandableSectionHeaderView_class;

/// `ALTitleSectionHeaderView`: a section's title, or the title of a whole list, with a way back that a tap takes: then
/// the delegate is told `titleSectionHeaderViewDidTapBackButton`.
extern const platform::ClassDefinition ALTitleSectionHeaderView_class;

} // namespace appledger
