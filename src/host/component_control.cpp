#include "host/component_control.h"

#include <utility>

namespace plexoras {
namespace {

constexpr std::string_view event_member = "setEventSink";

}  // namespace

// What the component calls its events on. The component may hold it longer than the control lives.
class ComponentControl::Sink final : public AutomationObject {
public:
  explicit Sink(ComponentControl& control) : control_(&control) {}
  void let_go() { control_ = nullptr; }

  Variant get(std::string_view member) override { no_such_member(member, "ComponentControl"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "ComponentControl"); }
  Variant call(std::string_view event, Arguments arguments) override {
    if (control_ == nullptr) return {};
    // The handler may delete the control that it belongs to, so a copy is called and nothing follows.
    if (const auto handler = control_->on_event) handler(event, arguments);
    return {};
  }

private:
  ComponentControl* control_;
};

ComponentControl::ComponentControl(ControlContainer& container, std::string name, ObjectRef component)
    : FormControl(container, std::move(name)), component_(std::move(component)), sink_(std::make_shared<Sink>(*this)) {
  if (component_ == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, {}, this->name());
  try {
    component_->call_with(event_member, {ObjectRef(sink_)});
  } catch (const AutomationError& error) {
    if (error.number() != RunTimeError::NoSuchMember) throw;
  }
}

ComponentControl::~ComponentControl() {
  sink_->let_go();
  ignoring_errors([&] { component_->call_with(event_member, {Variant()}); });
}

bool ComponentControl::user_call(std::string_view member, std::initializer_list<Variant> arguments) {
  if (!is_usable()) return false;
  component_->call_with(member, arguments);
  return true;
}

}  // namespace plexoras
