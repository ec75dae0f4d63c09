#include "authoring/snapshot.h"

#include <charconv>

namespace plexoras {
namespace {

// What a chart component asks for its picture.
class Painter final : public AutomationObject {
public:
  Painter(LiveControl& control, DrawChart draw, std::string language)
      : control_(control), draw_(std::move(draw)), language_(std::move(language)) {}

  Variant get(std::string_view member) override { return get_member(*this, members, member, source); }
  void put(std::string_view member, const Variant& value) override {
    put_member(*this, members, member, value, source);
  }
  Variant call(std::string_view member, Arguments arguments = {}) override {
    return call_member(*this, members, member, arguments, source);
  }

private:
  static Variant image(Painter& painter, Arguments) {
    const std::optional<ChartPicture> picture = picture_of(painter.control_, painter.language_);
    if (!picture) throw AutomationError(RunTimeError::InvalidCall, "the chart has no data of its own");
    return painter.draw_(*picture);
  }

  static constexpr std::string_view source = "Painter";
  static constexpr Member<Painter> members[] = {{.name = "getChartImage", .call = image}};

  LiveControl& control_;
  DrawChart draw_;
  std::string language_;
};

constexpr std::string_view stamped_opening = "<div data-stamp=\"";
constexpr std::size_t stamp_digits = 16;

// The 64-bit hash of Fowler, Noll and Vo (1a): not meant to withstand anybody, only to notice changes.
class Stamp {
public:
  void add(std::string_view text) {
    for (const char c : text) take(static_cast<unsigned char>(c));
    take(0x100);  // no byte, so that "ab", "c" is not "a", "bc"
  }

  std::string text() const {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) text += digits[(hash_ >> shift) & 15];
    return text;
  }

private:
  void take(std::uint64_t value) { hash_ = (hash_ ^ value) * 0x100000001b3; }

  std::uint64_t hash_ = 0xcbf29ce484222325;
};

// The chart's size on the page, unless a custom property gives another one in pixels. A picture has no percents.
std::int32_t size_of(DesignTimeControl& control, std::string_view property, std::int32_t on_page) {
  const std::string text = control.GetProperty(property);
  std::int32_t size = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
  const bool is_size = error == std::errc() && end == text.data() + text.size() && size > 0;
  return is_size ? size : on_page;
}

}  // namespace

std::optional<ChartPicture> picture_of(LiveControl& control, std::string_view language) {
  const ObjectRef chart = control.component();
  DesignTimeControl& properties = control.control();
  const std::string contents = properties.GetProperty("Contents");
  if (chart == nullptr || contents.empty()) return std::nullopt;

  constexpr std::int32_t twips = HeadlessSite::twips_per_pixel;
  ChartPicture picture{
      .settings = {{"XmlStyle", chart->get("XmlStyle").to_text()}, {"XmlContents", contents}},
      .width = size_of(properties, "WIDTH", control.site().width_in_twips / twips),
      .height = size_of(properties, "HEIGHT", control.site().height_in_twips / twips),
      .language = std::string(language),
  };
  Stamp stamp;
  // As it stands in the page, without defaults: a property that a later version adds changes no stamp.
  stamp.add(chart->call_with("FormatXml", {true, picture.settings.front().second}).to_text());
  stamp.add(contents);
  for (const auto& [parameter, property] : {std::pair("Caption", "CAPTION"), {"Alt", "ALT"}}) {
    picture.settings.emplace_back(parameter, properties.GetProperty(property));
    stamp.add(picture.settings.back().second);
  }
  stamp.add(std::to_string(picture.width));
  stamp.add(std::to_string(picture.height));
  stamp.add(language);
  picture.stamp = stamp.text();
  return picture;
}

ObjectRef paint_with(LiveControl& control, DrawChart draw, std::string language) {
  auto painter = std::make_shared<Painter>(control, std::move(draw), std::move(language));
  if (const ObjectRef chart = control.component()) {
    ignoring_errors([&] { chart->call_with("setPainter", {ObjectRef(painter)}); });
  }
  return painter;
}

std::string snapshot_element(std::string_view svg, std::string_view stamp) {
  const bool is_drawing = svg.starts_with("<svg") && svg.ends_with("</svg>") &&
                          svg.find("<!--") == std::string_view::npos && svg.find("<script") == std::string_view::npos;
  if (!is_drawing) {
    throw AutomationError(RunTimeError::InvalidCall,
                          "what was drawn cannot stand in a page: it is no SVG element alone", "Snapshot");
  }
  std::string element(stamped_opening);
  element.append(stamp).append("\">");
  element.reserve(element.size() + svg.size() + svg.size() / 8);
  for (std::size_t i = 0; i < svg.size(); ++i) {
    const std::string_view rest = svg.substr(i);
    if (rest.starts_with("$(")) {
      element += "&#36;";
    } else if (rest.starts_with("#(")) {
      element += "&#35;";
    } else if (rest.starts_with("-->")) {
      element += "&#45;";
    } else if (svg[i] == '\n') {
      element += "\r\n";  // as all lines of a template
    } else {
      element += svg[i];
    }
  }
  return element + "</div>";
}

std::string_view stamp_in(std::string_view text) {
  const std::size_t at = text.find(stamped_opening);
  if (at == std::string_view::npos) return {};
  const std::string_view stamp = text.substr(at + stamped_opening.size(), stamp_digits);
  return stamp.find_first_not_of("0123456789abcdef") == std::string_view::npos ? stamp : std::string_view();
}

}  // namespace plexoras
