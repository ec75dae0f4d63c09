#include "host/component_control.h"

#include <gtest/gtest.h>

#include "outcome.h"

namespace plexoras {
namespace {

// A component with events, or without.
class Grid final : public AutomationObject {
public:
  explicit Grid(bool has_events = true) : has_events_(has_events) {}

  Variant get(std::string_view member) override { no_such_member(member, "Grid"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Grid"); }
  Variant call(std::string_view member, Arguments arguments) override {
    if (member == "setEventSink" && has_events_) {
      sink = arguments[0].is_nothing() ? nullptr : arguments[0].to_object();
      if (sink != nullptr) kept_sink = sink;
      if (refuses) throw AutomationError(RunTimeError::InvalidCall);
    } else if (member == "select") {
      const ObjectRef told = sink;
      if (told != nullptr) told->call_with("SelectionChange", {arguments[0]});
    } else {
      no_such_member(member, "Grid");
    }
    return {};
  }

  ObjectRef sink, kept_sink;
  bool refuses = false;

private:
  bool has_events_;
};

TEST(ComponentControl, RelaysTheEventsOfItsComponent) {
  const auto grid = std::make_shared<Grid>();
  ObjectRef kept_sink;
  std::string log;
  {
    Form form;
    ComponentControl& control = form.add<ComponentControl>("tbl", grid);
    EXPECT_EQ(&control.component(), grid.get());
    EXPECT_TRUE(control.user_call("select", {1}));  // nobody listens
    control.on_event = [&](std::string_view event, Arguments arguments) {
      log += std::string(event) + " " + arguments[0].to_text() + "; ";
    };
    EXPECT_TRUE(control.user_call("select", {2}));
    control.enabled = false;
    EXPECT_FALSE(control.user_call("select", {3}));
    control.component().call_with("select", {4});
    EXPECT_EQ(brief_outcome([&] { return control.component().get("x").to_text(); }), "error 438");
    kept_sink = grid->sink;
  }
  // The control is gone: the component has been told, and who kept the sink calls nobody.
  EXPECT_EQ(grid->sink, nullptr);
  kept_sink->call_with("SelectionChange", {5});
  EXPECT_EQ(log, "SelectionChange 2; SelectionChange 4; ");
}

TEST(ComponentControl, MayBeDeletedByItsHandler) {
  const auto grid = std::make_shared<Grid>();
  Form form;
  ComponentControl& control = form.add<ComponentControl>("tbl", grid);
  const std::string captured = "still there when the control is gone";
  std::string log;
  control.on_event = [&form, &log, captured](std::string_view, Arguments) {
    form.remove_controls();
    log = captured;
  };
  control.component().call_with("select", {1});
  EXPECT_EQ(log, captured);
  EXPECT_EQ(grid->sink, nullptr);
}

TEST(ComponentControl, TakesItsListenerBackFromAComponentThatRefusesIt) {
  const auto grid = std::make_shared<Grid>();
  grid->refuses = true;
  int heard = 0;
  EXPECT_THROW(ComponentEvents(grid, [&](std::string_view, Arguments) { ++heard; }), AutomationError);
  EXPECT_EQ(grid->sink, nullptr);
  grid->kept_sink->call_with("SelectionChange", {1});
  EXPECT_EQ(heard, 0);
}

TEST(ComponentControl, HoldsComponentsWithoutEvents) {
  Form form;
  EXPECT_NO_THROW(form.add<ComponentControl>("plain", std::make_shared<Grid>(false)));
  EXPECT_EQ(brief_outcome([&] { return form.add<ComponentControl>("none", ObjectRef()).name(); }), "error 91");
}

}  // namespace
}  // namespace plexoras
