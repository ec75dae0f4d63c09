#pragma once

#include <string_view>

#include "host/form.h"
#include "template/template_session.h"

namespace plexoras {

/// The about box of a control: the product's constants, as those sections of the control's template file define them
/// whose names begin with ".", in their order. A file without any, or none, gives those of APPLET.DAT.
///
///     AboutBox(session, "DIAGRAM.DAT").ShowModal(session.platform);
///
/// Each constant is a pair of labels in order: lblKey0 and lblValue0, lblKey1 and lblValue1, and so on.
class AboutBox final : public Form {
public:
  /// `session` is used while it is made alone.
  AboutBox(TemplateSession& session, std::string_view template_file);

  void cmdOK_Click() { close(); }

private:
  void add_constants(TemplateSession& session, std::string_view template_file, std::string_view section);
};

}  // namespace plexoras
