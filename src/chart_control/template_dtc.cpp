#include "chart_control/template_dtc.h"

namespace plexoras {
namespace {

constexpr std::string_view own_keys[] = {"AppletID"};

}  // namespace

void TemplateDTC::InitProperties() {
  ensure_name();
  reset_custom_properties();
}

void TemplateDTC::ReadProperties(PropertyBag& bag) {
  stored_id_ = bag.read("AppletID", "").to_text();
  read_custom_properties(bag, own_keys);
}

void TemplateDTC::WriteProperties(PropertyBag& bag) {
  bag.write("AppletID", stored_id_, "");
  write_custom_properties(bag);
}

std::string TemplateDTC::GetRuntimeText() {
  std::string text;
  ignoring_errors([&] { text = GetRuntimeTextOnErrorReport(); });
  return text;
}

std::string TemplateDTC::GetRuntimeTextOnErrorReport() {
  IniSection text(session_);
  text.SetVariables(*custom_properties_);
  text.Read(template_file, "TEMPLATE");
  bind_width(text);
  bind_height(text);
  text.Define("APPLETID", appletId());
  return text.GetContents();
}

}  // namespace plexoras
