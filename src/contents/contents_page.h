#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/hosted_form.h"
#include "host/property_page.h"
#include "host/selected_properties.h"
#include "template/dictionary.h"
#include "template/template_session.h"

namespace plexoras {

/// The property page for a chart's data. What stands on it is the choice of the control's template, as the variable
/// "DSPROGID" of the section of that name, where the custom properties are variables too:
///
/// | DSPROGID | on the page |
/// |---|---|
/// | `PlexorasDTC.DsContentsComponent` | the component with this identifier |
/// | `[DATA_SPEC]` | the input form that section DATA_SPEC of the template describes |
/// | `[DATA_SPEC]:OTHER.DAT` | the same from another template file |
///
/// A template that names nothing, or a section that there is not, has a page that says so. The components come from the
/// platform's registry and stay on the page, hidden and disabled while another one is in use.
///
/// The page is the host that the components call back. It keeps the values they give it until it is applied, and then
/// writes them into the custom properties: plain, so that the property "Contents" is the contents document itself, byte
/// for byte as the author sees it. It reaches the selected control by member name alone (`templateFile`,
/// `CustomProperties`, `FireCustomPropertyChange`, `getDiagram`, `XmlContents`).
class Contents final : public PropertyPage {
public:
  /// `templates` outlives the page.
  explicit Contents(TemplateSession& templates);
  ~Contents() override;

  /// Says why nothing else stands on the page, where nothing does.
  Label& lblNoEditor = add<Label>("lblNoEditor");

  /// Drops what has not been applied, and shows the selected control's values in what its template chooses. Error 5
  /// when DSPROGID begins with "[" and lacks the name of a section or of a file; 429 when there is no such component,
  /// or none that has a form and edits values. After an error the page is empty.
  void SelectionChanged() override;
  /// Has the component store what was edited, writes it, and tells the selected control. When the control refuses
  /// something midway, what was stored before stays, the control is told of it, and the error comes out.
  void ApplyChanges() override;

  /// The value that was set under `key` since, or the custom property; see "contents/value_store.h" for its form.
  std::string GetValue(std::string_view key);
  /// Takes a value in that form, to be written when the page is applied.
  void setValue(std::string_view key, std::string_view text);
  /// Shows `document`, which is plain, in the chart, without storing it. Other text than a contents document is told in
  /// a message box and changes nothing. Error 91 when the control shows no chart.
  void SetButtonPressed(std::string_view document);

private:
  class Callbacks;

  enum class Present { Discarded, Stale };

  void choose(Present present);
  void show_nothing(std::string_view why);
  void put_away();
  FormHost& host_of(std::string_view identifier);
  HostedForm& component() const;

  TemplateSession& templates_;
  const std::shared_ptr<Callbacks> callbacks_;
  FormHost* hosted_ = nullptr;  // the one in use
  std::string chosen_;          // the value of DSPROGID that asked for it
  Dictionary values_;           // set and not yet written, in the form in which they came
};

}  // namespace plexoras
