// How a chart control's state gets into a property bag and back.

#include "chart_control/diagram_dtc.h"

namespace plexoras {
namespace {

constexpr std::string_view own_keys[] = {"AppletID", "XmlStyle", "ColSelection", "RowSelection"};

// No row or column is selected.
constexpr std::int16_t no_selection = -1;

}  // namespace

void DiagramDTC::ReadProperties(PropertyBag& bag) {
  create_design_view();

  stored_id_ = bag.read("AppletID", "").to_text();
  if (diagram_ == nullptr) InitObject();
  put("XmlStyle", bag.read("XmlStyle", get("XmlStyle")).to_text());
  if (IsDesignViewLive()) component().call("UseSampleContents");

  read_custom_properties(bag, own_keys);

  // The data travel as a custom property. What the component refuses leaves it with the data it has.
  const std::string contents = GetProperty("Contents");
  if (component().call_with("isValidXmlContents", {contents}).to_boolean()) put("XmlContents", contents);

  put("ColSelection", bag.read("ColSelection", no_selection).to_integer());
  put("RowSelection", bag.read("RowSelection", no_selection).to_integer());
  Refresh();
}

void DiagramDTC::WriteProperties(PropertyBag& bag) {
  bag.write("AppletID", stored_id_, "");
  bag.write("XmlStyle", get("XmlStyle"), Variant());
  bag.write("ColSelection", get("ColSelection"), no_selection);
  bag.write("RowSelection", get("RowSelection"), no_selection);
  write_custom_properties(bag);
}

std::string DiagramDTC::GetPropertiesBytes() {
  MemoryPropertyBag bag;
  WriteProperties(bag);
  return to_hex(bag.bytes());
}

void DiagramDTC::SetPropertiesBytes(std::string_view text) {
  MemoryPropertyBag bag = MemoryPropertyBag::from_bytes(from_hex(text));
  ReadProperties(bag);
}

}  // namespace plexoras
