#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "chart_control/diagram_dtc.h"
#include "fake_component.h"
#include "host/headless_site.h"
#include "template/engine_fixture.h"

namespace plexoras {

/// A chart control with a fake component, a site that is plain data, and its template file in memory.
struct ChartFixture {
  enum class View { Design, None };

  explicit ChartFixture(View view = View::Design, std::string_view template_text = {}) {
    host.files["DIAGRAM.DAT"] = template_text;
    host.components.add(std::string(chart_component::identifier),
                        [this] { return std::make_shared<FakeComponent>(log); });
    site.name = "Sales";
    site.shows_design_view = view == View::Design;
  }

  /// A new control; what happened meanwhile is forgotten.
  ChartFixture& initialised() {
    chart.InitProperties();
    forget();
    return *this;
  }

  void forget() {
    log.take();
    site.changed_properties.clear();
  }

  /// The names announced since the last call, each followed by a blank.
  std::string announced() {
    std::string text;
    for (const std::string& name : std::exchange(site.changed_properties, {})) text += name + " ";
    return text;
  }

  ComponentLog log;
  FakePlatform host;
  TemplateSession session{host.platform};
  HeadlessSite site{host.components};
  DiagramDTC chart{session, site};
};

}  // namespace plexoras
