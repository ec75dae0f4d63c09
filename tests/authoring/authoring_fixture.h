#pragma once

#include <string>
#include <string_view>

#include "applet/diagram_applet.h"
#include "authoring/control_properties.h"
#include "authoring/live_control.h"
#include "authoring/page.h"
#include "host/outcome.h"
#include "template/engine_fixture.h"

namespace plexoras {

/// An author at work: a session with the real chart component, and a template file that writes the chart's documents
/// as they come and one custom property as it is.
struct Author {
  explicit Author(std::string_view template_text = default_template) {
    host.files["DIAGRAM.DAT"] = template_text;
    register_diagram_applet(host.components);
  }

  LiveControl make(std::string_view name = "Sales") { return LiveControl::make_new(session, "chart", name); }

  static constexpr std::string_view default_template =
      "[PROPERTY]\n"
      "#DEFINE Contents x\n#DEFINE Contents ''\n#DEFINE NOTE x\n#DEFINE NOTE ''\n#DEFINE FAIL x\n#DEFINE FAIL ''\n"
      "[TEMPLATE]\n"
      "#IFEQUAL FAIL yes\n#MACRO LOOP x#(LOOP)\na#(LOOP)\n#ENDIF\n"
      "<p id=\"$(APPLETID)\" style=\"$(XmlStyle)\">$(Contents)</p>\n";

  FakePlatform host;
  TemplateSession session{host.platform};
};

/// `record` in a page of its own, with `text` for readers.
inline std::string page_of(const ControlRecord& record, std::string_view text = {},
                           std::string_view line_break = "\n") {
  return "<body>" + std::string(line_break) + Page::span_text(record, text, line_break) + std::string(line_break) +
         "</body>" + std::string(line_break);
}

}  // namespace plexoras
