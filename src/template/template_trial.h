#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/platform.h"
#include "template/diagnostic.h"
#include "template/dictionary.h"

namespace plexoras {

/// What came of a piece of template text that somebody tried out.
struct TemplateTrial {
  std::string text;
  std::vector<Diagnostic> diagnostics;
};

/// Tries `text` out where a template has halted: with its variables, and with the template file that bare references
/// and inclusions mean there.
///
/// `text` may have lines, ended in any way, and directives. Nothing reaches the template: the text runs over a copy of
/// the variables and in a session of its own, with limits of its own, so that the halted request has all that it had
/// even when this one runs away. A "#HALT" in it is passed over. A failure is shown in `platform`'s message box.
TemplateTrial try_template_text(const Platform& platform, const Dictionary& variables, std::string_view template_file,
                                std::string_view text);

}  // namespace plexoras
