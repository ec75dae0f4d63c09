#include "contents/contents_page.h"

#include "contents/value_store.h"
#include "template/customizer_control.h"
#include "template/ini_section.h"
#include "template/references.h"

namespace plexoras {
namespace {

constexpr std::string_view page_caption = "Contents";
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
};

// What DSPROGID asks for: a component and, for an input form, the window-spec that describes it.
struct Choice {
  std::string identifier;
  std::string section = {};
  std::string file = {};

  bool is_form() const { return !section.empty(); }
};

// `value` is that of DSPROGID in `own_file`.
Choice choice_of(const std::string& value, const std::string& own_file) {
  if (!value.starts_with('[')) return {.identifier = value};
  const std::string form(CustomizerControl::identifier);
  const std::size_t end = value.find("]:");
  // Kept: without a file the last character goes, be it a bracket or not.
  Choice choice = end == std::string::npos ? Choice{form, value.substr(1, value.size() - 2), own_file}
                                           : Choice{form, value.substr(1, end - 1), value.substr(end + 2)};
  if (choice.section.empty() || choice.file.empty()) {
    throw AutomationError(
        RunTimeError::InvalidCall,
        "DSPROGID of " + own_file + " is \"" + value + "\", which names no form; write [SECTION] or [SECTION]:FILE",
        std::string(page_caption));
  }
  return choice;
}

}  // namespace

/// The page as its components see it: the selected control's dictionary, and the page's own members.
class Contents::Callbacks final : public SelectedProperties {
public:
  using SelectedProperties::SelectedProperties;

  Variant call(std::string_view member, Arguments arguments) override {
    if (find_member(host_members, member) == nullptr) return SelectedProperties::call(member, arguments);
    return call_member(static_cast<Contents&>(page()), host_members, member, arguments, page_caption);
  }
};

Contents::Contents(TemplateSession& templates) : templates_(templates), callbacks_(std::make_shared<Callbacks>(*this)) {
  caption = page_caption;
  lblNoEditor.visible = false;
}

Contents::~Contents() { callbacks_->let_go(); }

void Contents::SelectionChanged() {
  values_ = Dictionary();
  try {
    Present present = Present::Stale;
    if (hosted_ != nullptr) {
      // Whether it is to stay is not known yet. If it goes, it may raise whatever it likes.
      ignoring_errors([&] {
        component().call("Discard");
        present = Present::Discarded;
      });
    }
    choose(present);
  } catch (...) {
    // What shows another control's values must not be applied to this one.
    put_away();
    throw;
  }
}

// `present` is what has become of the component in use.
void Contents::choose(Present present) {
  const std::string file = selected_control().get("templateFile").to_text();
  const Dictionary properties = copy_of(*callbacks_);
  const std::string constant = GetSectionConstant(templates_, file, choice_section, choice_section, &properties);
  const std::string wanted(trimmed(constant));
  const Choice choice = choice_of(wanted, file);
  if (wanted.empty()) return show_nothing("The template of this control names nothing to edit contents with.");
  if (choice.is_form() && !templates_.files.has_section(choice.file, choice.section)) {
    return show_nothing("There is no section \"" + choice.section + "\" in " + choice.file + ", which DSPROGID of " +
                        file + " names.");
  }

  const bool is_kept = hosted_ != nullptr && wanted == chosen_;
  if (!is_kept) put_away();
  try {
    if (!is_kept) hosted_ = &host_of(choice.identifier);
    if (!choice.is_form() && !(is_kept && present == Present::Discarded)) component().call("Discard");
  } catch (const AutomationError& error) {
    if (error.number() != RunTimeError::NoSuchMember) throw;
    throw AutomationError(RunTimeError::CannotCreateObject,
                          "DSPROGID of " + file + " names \"" + choice.identifier +
                              "\", which cannot edit contents: " + error.description(),
                          caption);
  }
  if (choice.is_form()) {
    // Anew for each control: its properties may change the form, or its template have another one of that name.
    component().call_with("loadWindowSpec", {choice.section, choice.file, ObjectRef(callbacks_)});
  }
  chosen_ = wanted;
  lblNoEditor.visible = false;
  hosted_->visible = hosted_->enabled = true;
}

void Contents::show_nothing(std::string_view why) {
  put_away();
  lblNoEditor.caption = why;
  lblNoEditor.visible = true;
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
                          "The component \"" + std::string(identifier) + "\", which DSPROGID of the template names, " +
                              "has no form to show",
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
  callbacks_->store_and_tell([this] {
    if (hosted_ != nullptr) component().call("Accept");
    for (std::int32_t i = 0; i < values_.Count(); ++i) {
      callbacks_->call_with("atPut", {values_.keyAtIndex(i), value_from_transit(values_.valueAtIndex(i))});
    }
    values_ = Dictionary();
  });
}

std::string Contents::GetValue(std::string_view key) {
  if (values_.includes(key, Dictionary::EmptyValues::Keep)) return values_.atGet(key);
  return value_in_transit(callbacks_->call_with("atGet", {key}).to_text());
}

void Contents::setValue(std::string_view key, std::string_view text) {
  values_.atPut(key, text, Dictionary::EmptyValues::Keep);
}

void Contents::SetButtonPressed(std::string_view document) {
  AutomationObject& control = selected_control();
  const Variant shown = control.get("getDiagram");
  if (shown.is_nothing() || shown == Variant(ObjectRef())) {
    throw AutomationError(RunTimeError::ObjectNotSet, "The control shows no chart in which contents could be set",
                          caption);
  }
  if (shown.to_object()->call_with("isValidXmlContents", {document}).to_boolean()) {
    control.put("XmlContents", document);
  } else {
    templates_.platform.show_message("Cannot show malformatted XML");
  }
}

}  // namespace plexoras
