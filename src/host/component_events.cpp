#include "host/component_events.h"

#include <utility>

namespace plexoras {
namespace {

constexpr std::string_view event_member = "setEventSink";

}  // namespace

// What the component calls its events on. The component may hold it longer than anybody listens.
class ComponentEvents::Sink final : public AutomationObject {
public:
  explicit Sink(Handler handler) : handler_(std::move(handler)) {}
  void let_go() { handler_ = nullptr; }

  Variant get(std::string_view member) override { no_such_member(member, "ComponentEvents"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "ComponentEvents"); }
  Variant call(std::string_view event, Arguments arguments) override {
    // The handler may end the listening, so a copy is called and nothing follows.
    if (const Handler handler = handler_) handler(event, arguments);
    return {};
  }

private:
  Handler handler_;
};

ComponentEvents::ComponentEvents(ObjectRef component, std::shared_ptr<Sink> sink)
    : component_(std::move(component)), sink_(std::move(sink)) {}

// The object is complete before the component has the sink. So when the component keeps it and raises all the same,
// the destructor runs and takes it back.
ComponentEvents::ComponentEvents(ObjectRef component, Handler handler)
    : ComponentEvents(std::move(component), std::make_shared<Sink>(std::move(handler))) {
  try {
    component_->call_with(event_member, {ObjectRef(sink_)});
  } catch (const AutomationError& error) {
    if (error.number() != RunTimeError::NoSuchMember) throw;
  }
}

ComponentEvents::~ComponentEvents() {
  sink_->let_go();
  ignoring_errors([&] { component_->call_with(event_member, {Variant()}); });
}

}  // namespace plexoras
