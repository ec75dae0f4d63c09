#pragma once

#include <string>
#include <string_view>

#include "template/dictionary.h"

namespace plexoras {

/// What an input component that edits one value of a page, such as the contents editor, asks of its `host`:
///
/// | member | meaning |
/// |---|---|
/// | `GetValue(key)` | the value to edit, in the form below |
/// | `setValue(key, text)` | takes the edited value, in that form, until the page is applied |
/// | `SetButtonPressed(document)` | shows a contents document, as it is, in the chart |
/// | `RaiseChangedEvent()` | the author has edited something |
///
/// The component itself answers `Discard()` (show the host's value) and `Accept()` (give it the edited one).
///
/// On the way between the two each "&" of a value is "&amp;", those of its entities included, so that a document's
/// `R&amp;D` travels as `R&amp;amp;D`. Every "&" of such a text begins an "&amp;" that was put there, so that
/// replacing from left to right gives just the value back, whatever is in it. Where the value is kept, it is plain.
inline std::string value_in_transit(std::string_view value) { return replaced_all(value, "&", "&amp;"); }
inline std::string value_from_transit(std::string_view text) { return replaced_all(text, "&amp;", "&"); }

}  // namespace plexoras
