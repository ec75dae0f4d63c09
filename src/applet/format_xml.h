#pragma once

#include <string>
#include <string_view>

namespace plexoras {

/// Where the text that `format_xml` makes is going to stand.
enum class FormatFor {
  Text,       ///< anywhere: nothing is escaped
  Attribute,  ///< in a double-quoted attribute of a page, see `escape_for_attribute`
};

/// The document `xml` in the compact dialect (see `CompactXmlReader`), with the line breaks between its elements
/// removed. All other text stays byte for byte as it is. The empty text gives the empty text.
///
/// Error 5 with "line:column: what is wrong" when the text is not well formed.
std::string format_xml(std::string_view xml, FormatFor use);

/// `text` as the value of a double-quoted attribute in a page that a template engine still runs over.
///
/// &, <, >, " and ' become entities; tab, CR and LF become numeric references, which keep a browser from turning
/// them into blanks. "$" and "#" become "&#36;" and "&#35;" where a "(" follows or the text ends, since what follows
/// may begin with one: the template engine expands its own output again, and must not see a reference there.
std::string escape_for_attribute(std::string_view text);

}  // namespace plexoras
