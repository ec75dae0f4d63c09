// The text that takes a chart control's place in the published page.

#include "chart_control/diagram_dtc.h"

namespace plexoras {
namespace {

std::string error_text(const AutomationError& error) {
  return "; Error(" + std::to_string(static_cast<int>(error.number())) + "):" + error.description() +
         "\r\nSource: " + error.source();
}

}  // namespace

std::string DiagramDTC::GetRuntimeText() {
  std::string progress;
  try {
    std::string text = build_text(Output::Commented, progress);
    return progress + text;
  } catch (const AutomationError& error) {
    return progress + error_text(error);
  } catch (const std::exception& error) {
    // A chart component of an embedder's own may raise anything.
    return progress + error_text(AutomationError(RunTimeError::InvalidCall, error.what()));
  }
}

std::string DiagramDTC::GetRuntimeTextOnErrorResume() {
  std::string text;
  ignoring_errors([&] { text = GetRuntimeTextOnErrorReport(); });
  return text;
}

std::string DiagramDTC::GetRuntimeTextOnErrorReport() {
  std::string progress;
  std::string text = build_text(Output::Commented, progress);
  return progress + text;
}

std::string DiagramDTC::GetRuntimeHTML() {
  std::string progress;
  return build_text(Output::Bare, progress);
}

// `progress` is a comment that grows by a marker as each step begins, so that a failure shows how far it got.
std::string DiagramDTC::build_text(Output output, std::string& progress) {
  progress = "<!-- ";

  progress += "Setting Properties; ";
  IniSection text(session_);
  text.SetVariables(*custom_properties_);

  progress += "Reading Template; ";
  text.Read(template_file, "TEMPLATE");

  progress += "Setting Width; ";
  bind_width(text);

  progress += "Setting Height; ";
  bind_height(text);

  progress += "Defining ID; ";
  text.Define("APPLETID", appletId());
  if (output == Output::Bare) text.Define("CUSTOMDAT", GetPropertiesBytes());
  if (design_view_ != nullptr) {
    bool visible = true;
    ignoring_errors([&] { visible = site_.extender_visible(); });
    text.Define("Visible", Variant(visible).to_text());
  }

  progress += "Formatting XmlStyle; ";
  AutomationObject& chart = component();
  text.Define("XmlStyle", chart.call_with("FormatXml", {true, get("XmlStyle")}).to_text());

  progress += "Formatting XmlContents; ";
  text.Define("Contents", chart.call_with("FormatXml", {true, text.Find("Contents")}).to_text());

  progress += "Defining Selection; ";
  const std::int16_t column = get("ColSelection").to_integer();
  const std::int16_t row = get("RowSelection").to_integer();
  if (column >= 0) text.Define("COLSELECTION", std::to_string(column));
  if (row >= 0) text.Define("ROWSELECTION", std::to_string(row));

  progress += "Getting HTML; -->";
  return text.GetContents();
}

}  // namespace plexoras
