#include "contents/contents_page.h"

#include "contents/value_store.h"
#include "template/customizer_control.h"
#include "template/ini_section.h"
#include "template/references.h"

namespace plexoras {
namespace {

// The section of a template that chooses what stands on the page, and its variable.
constexpr std::string_view choice_section = "DSPROGID";

// What components call on the page.
const Member<Contents> host_members[] = {
    {.name = "GetValue",
     .call = [](Contents& page, Arguments a) { return Variant(page.GetValue(a[0].to_text())); },
     .arguments = 1},
    {.name = "setValue",
     .call = [](Contents& page, Arguments a) { return page.setValue(a[0].to_text(), a[1].to_text()), Variant(); },
     .arguments = 2},
    {.name = "SetButtonPressed",
     .call = [](Contents& page, Arguments a) { return page.SetButtonPressed(a[0].to_text()), Variant(); },
     .arguments = 1},
    {.name = "RaiseChangedEvent",
     .call = [](Contents& page, Arguments) { return page.RaiseChangedEvent(), Variant(); }},
};

// A component and, for an input form, the window-spec that describes it.
struct Choice {
  std::string identifier;
  std::string section = {};
  std::string file = {};
};

bool is_window_spec(std::string_view value) { return value.starts_with('['); }

Choice choice_of(const std::string& value, const std::string& own_file) {
  if (!is_window_spec(value)) return {.identifier = value};
  const std::string form(CustomizerControl::identifier);
  const std::size_t end = value.find("]:");
  // Kept: without a file the last character goes, be it a bracket or not.
  if (end == std::string::npos) return {form, value.substr(1, value.size() - 2), own_file};
  return {form, value.substr(1, end - 1), value.substr(end + 2)};
}

}  // namespace

/// The page as its components see it. It is also the selected control's dictionary, by way of the control, which may
/// have taken another one since the component was loaded.
class Contents::Callbacks final : public AutomationObject {
public:
  explicit Callbacks(Contents& page) : page_(page) {}

  Variant get(std::string_view member) override { return page_.custom_properties()->get(member); }
  void put(std::string_view member, const Variant& value) override { page_.custom_properties()->put(member, value); }
  Variant call(std::string_view member, Arguments arguments) override {
    if (find_member(host_members, member) == nullptr) return page_.custom_properties()->call(member, arguments);
    return call_member(page_, host_members, member, arguments, page_.caption);
  }

private:
  Contents& page_;
};

Contents::Contents(TemplateSession& templates) : templates_(templates), callbacks_(std::make_shared<Callbacks>(*this)) {
  caption = "Contents";
  lblNoEditor.visible = false;
}

void Contents::SelectionChanged() {
  values_ = Dictionary();
  try {
    if (hosted_ != nullptr) component().call("Discard");
    choose();
  } catch (...) {
    // What shows another control's values must not be applied to this one.
    put_away();
    throw;
  }
}

void Contents::choose() {
  const std::string file = selected_control().get("templateFile").to_text();
  const Dictionary properties = copy_of(*custom_properties());
  const std::string constant = GetSectionConstant(templates_, file, choice_section, choice_section, &properties);
  const std::string wanted(trimmed(constant));
  const Choice choice = choice_of(wanted, file);

  const bool is_kept = hosted_ != nullptr && wanted == chosen_;
  if (!is_kept) {
    put_away();
    lblNoEditor.visible = wanted.empty();
    if (wanted.empty()) return;
    hosted_ = &host_of(choice.identifier);
    chosen_ = wanted;
  }
  if (is_window_spec(wanted)) {
    // Anew for each control: its properties may change the form, or its template have another one of that name.
    component().call_with("loadWindowSpec", {choice.section, choice.file, ObjectRef(callbacks_)});
  } else if (!is_kept) {
    component().call("Discard");
  }
  hosted_->visible = hosted_->enabled = true;
}

void Contents::put_away() {
  lblNoEditor.visible = false;
  chosen_.clear();
  if (hosted_ == nullptr) return;
  hosted_->visible = hosted_->enabled = false;
  hosted_ = nullptr;
}

// The place of the component `identifier` on the page, made when it is first asked for.
FormHost& Contents::host_of(std::string_view identifier) {
  const std::string name = replaced_all(identifier, ".", "");
  for (const auto& control : controls()) {
    auto* const host = dynamic_cast<FormHost*>(control.get());
    if (host != nullptr && host->name() == name) return *host;
  }
  const ObjectRef made = templates_.platform.components.create(identifier);
  const std::shared_ptr<Form> form = form_of(made);
  if (form == nullptr) {
    throw AutomationError(RunTimeError::CannotCreateObject,
                          "the component \"" + std::string(identifier) + "\", which section " +
                              std::string(choice_section) + " of the template names, has no form to show",
                          caption);
  }
  made->put("host", ObjectRef(callbacks_));
  auto& host = add<FormHost>(name, form);
  host.placement = {.left = 20, .top = 20};  // Kept: as wide and high as the page, and so reaching beyond it
  return host;
}

// `host_of` takes nothing else.
HostedForm& Contents::component() const { return dynamic_cast<HostedForm&>(hosted_->hosted()); }

void Contents::ApplyChanges() {
  if (hosted_ != nullptr) component().call("Accept");
  for (std::int32_t i = 0; i < values_.Count(); ++i) {
    custom_properties()->call_with("atPut", {values_.keyAtIndex(i), value_from_transit(values_.valueAtIndex(i))});
  }
  values_ = Dictionary();
  selected_control().call("FireCustomPropertyChange");
}

std::string Contents::GetValue(std::string_view key) {
  if (values_.includes(key, Dictionary::EmptyValues::Keep)) return values_.atGet(key);
  return value_in_transit(custom_properties()->call_with("atGet", {key}).to_text());
}

void Contents::setValue(std::string_view key, std::string_view text) {
  values_.atPut(key, text, Dictionary::EmptyValues::Keep);
}

void Contents::SetButtonPressed(std::string_view document) {
  AutomationObject& control = selected_control();
  const ObjectRef chart = control.get("getDiagram").to_object();
  if (chart->call_with("isValidXmlContents", {document}).to_boolean()) {
    control.put("XmlContents", document);
  } else {
    templates_.platform.show_message("Cannot show malformatted XML");
  }
}

ObjectRef Contents::custom_properties() const { return selected_control().get("CustomProperties").to_object(); }

}  // namespace plexoras
