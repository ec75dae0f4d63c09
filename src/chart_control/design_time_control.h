#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "host/automation.h"
#include "host/control_site.h"
#include "host/property_bag.h"
#include "template/dictionary.h"
#include "template/ini_section.h"

namespace plexoras {

/// What every design-time control on a page has: a name, custom properties that its template declares, and a text
/// that its template makes for readers.
///
/// The custom properties begin as the definitions in section "PROPERTY" of the control's template file, and what the
/// page stored is laid over them. Property pages reach a control by member name alone, so they serve any kind.
///
/// Made by the host for one place on a page. `session` and `site` outlive it.
class DesignTimeControl : public AutomationObject, public IProvideRuntimeText {
public:
  DesignTimeControl(TemplateSession& session, ControlSite& site, std::string_view template_file)
      : session_(session), site_(site), template_file_(template_file) {}

  /// The host has put a new control on the page.
  virtual void InitProperties() = 0;
  /// The host has opened a page that holds this control.
  virtual void ReadProperties(PropertyBag& bag) = 0;
  /// The host saves the page.
  virtual void WriteProperties(PropertyBag& bag) = 0;
  /// `GetRuntimeText` with failures raised.
  virtual std::string GetRuntimeTextOnErrorReport() = 0;

  /// The control's name on the page, else the name that the host shows for it, else the one last stored. Never fails.
  std::string appletId();
  /// Renames the control on the page; a host that refuses is ignored.
  void appletId(std::string_view name);

  /// The custom properties themselves: callers change them in place and then call `FireCustomPropertyChange`.
  const std::shared_ptr<Dictionary>& CustomProperties() const { return custom_properties_; }
  StringList GetPropertyKeys() const { return custom_properties_->GetKeys(); }
  std::string GetProperty(std::string_view key) const { return custom_properties_->atGet(key); }
  void SetProperty(std::string_view key, std::string_view value) { custom_properties_->atPut(key, value); }
  void FireCustomPropertyChange() { site_.property_changed("CustomProperties"); }

  /// The template file, and its sections that describe the form for the custom properties and the lookup tables.
  std::string_view templateFile() const { return template_file_; }
  static constexpr std::string_view advancedSpecSection = "ADVANCED_SPEC";
  static constexpr std::string_view constSpecSection = "CONSTANT";

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments) override;

protected:
  /// The custom properties as the template declares them.
  std::shared_ptr<Dictionary> declared_properties();
  /// Takes the declared properties in place of the present ones.
  void reset_custom_properties() { custom_properties_ = declared_properties(); }
  /// Lays what `bag` holds over the declared properties. Keys that the template does not declare are taken as well,
  /// so that nothing that an author stored is lost when a template drops it; `own_keys` are the control's own.
  void read_custom_properties(PropertyBag& bag, std::span<const std::string_view> own_keys);
  void write_custom_properties(PropertyBag& bag);

  /// Gives a control without a name one of its own: "Plexora" and a random number from 0 to 1000.
  void ensure_name();

  /// Binds "WIDTH" and "HEIGHT", in pixels, where neither the template nor the author has set them.
  void bind_width(IniSection& text);
  void bind_height(IniSection& text);

  TemplateSession& session_;
  ControlSite& site_;
  std::string stored_id_;
  std::shared_ptr<Dictionary> custom_properties_ = std::make_shared<Dictionary>();

private:
  std::string_view template_file_;
};

}  // namespace plexoras
