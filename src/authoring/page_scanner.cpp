#include "authoring/page_scanner.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/ascii.h"

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Whether `text` begins with `word`, which is in lower case, in any case.
bool starts_with_word(std::string_view text, std::string_view word) {
  return equal_but_for_case(text.substr(0, word.size()), word);
}

// The value of the attribute `lang` in the attributes of a tag; empty for what can be no language tag.
std::string_view language_of(std::string_view attributes) {
  for (std::size_t at = 0; at < attributes.size(); ++at) {
    if (!is_space(attributes[at]) || !starts_with_word(attributes.substr(at + 1), "lang")) continue;
    std::size_t begin = attributes.find_first_not_of(" \t\r\n\f", at + 5);
    if (begin == npos || attributes[begin] != '=') continue;
    begin = attributes.find_first_not_of(" \t\r\n\f\"'", begin + 1);
    if (begin == npos) continue;
    std::size_t end = begin;
    while (end < attributes.size() &&
           (is_letter(attributes[end]) || is_digit(attributes[end]) || attributes[end] == '-')) {
      ++end;
    }
    return attributes.substr(begin, end - begin);
  }
  return {};
}

// Elements whose content is text: no tag or comment begins inside them.
constexpr std::string_view text_elements[] = {"script", "style",  "title",    "textarea",
                                              "xmp",    "iframe", "noframes", "noembed"};

// Elements whose start tag ends a paragraph that is open. Their end tag ends it, too, for the paragraph is in them.
constexpr std::string_view block_elements[] = {
    "address", "article", "aside", "blockquote", "body",     "caption",    "center",    "dd",     "details", "dialog",
    "dir",     "div",     "dl",    "dt",         "fieldset", "figcaption", "figure",    "footer", "form",    "h1",
    "h2",      "h3",      "h4",    "h5",         "h6",       "header",     "hgroup",    "hr",     "html",    "li",
    "listing", "main",    "menu",  "nav",        "ol",       "p",          "plaintext", "pre",    "search",  "section",
    "summary", "table",   "tbody", "td",         "tfoot",    "th",         "thead",     "tr",     "ul",      "xmp",
};

// The name of a tag that begins with `tag`: what stands before a blank, "/" or ">".
std::string_view tag_name(std::string_view tag) { return tag.substr(0, tag.find_first_of(" \t\r\n\f/>")); }

bool is_word(std::string_view text, std::string_view word) {
  return text.size() == word.size() && starts_with_word(text, word);
}

class Scanner {
public:
  explicit Scanner(std::string_view page) : page_(page) {}

  ScannedPage scan() {
    std::size_t body_end = npos;
    std::size_t html_end = npos;
    while ((at_ = page_.find('<', at_)) != npos) {
      const std::string_view rest = page_.substr(at_);
      if (starts_with_control(rest)) {
        control();
      } else if (rest.starts_with(control_closing)) {
        problem(at_, "this closing mark belongs to no control; remove it");
        at_ += control_closing.size();
      } else if (rest.starts_with("<!--")) {
        comment();
      } else if (rest.starts_with("<?php") || rest.starts_with("<?=")) {
        skip_past("?>");  // a server's script may leave its end to the end of the page
      } else if (rest.starts_with("<%")) {
        skip_past("%>");
      } else if (rest.size() > 1 && (rest[1] == '!' || rest[1] == '?')) {
        skip_past(">");
      } else if (rest.size() > 1 && is_letter(rest[1])) {
        open_tag();
      } else if (rest.size() > 2 && rest[1] == '/' && is_letter(rest[2])) {
        if (starts_with_word(rest, "</body")) body_end = at_;
        if (starts_with_word(rest, "</html")) html_end = at_;
        if (is_block(tag_name(rest.substr(2)))) in_paragraph_ = false;
        skip_tag();
      } else {
        ++at_;
      }
    }
    result_.content_end = body_end != npos ? body_end : html_end != npos ? html_end : page_.size();
    return std::move(result_);
  }

private:
  static bool starts_with_control(std::string_view rest) {
    return rest.starts_with(control_opening) && rest.size() > control_opening.size() &&
           is_space(rest[control_opening.size()]);
  }

  void skip_past(std::string_view mark) {
    const std::size_t end = page_.find(mark, at_);
    at_ = end == npos ? page_.size() : end + mark.size();
  }

  void problem(std::size_t at, std::string what) { result_.problems.push_back({at, std::move(what)}); }

  void control() {
    published_.reset();  // a published text holds no control
    ControlSpan span;
    span.in_comment = std::exchange(in_comment_, false);
    span.in_paragraph = in_paragraph_;
    span.begin = at_;
    span.state_end = page_.find("-->", at_);
    if (span.state_end == npos) {
      problem(at_, "the comment that holds this control's state is not closed; end it with \"-->\"");
      at_ = page_.size();
      return;
    }
    span.text_begin = span.state_end + 3;
    // Looked for before the next control alone, so that unclosed controls do not each search the whole page.
    const std::string_view own = page_.substr(0, next_control(span.text_begin));
    span.text_end = own.find(control_closing, span.text_begin);
    if (span.text_end == npos) {
      problem(at_, "this control is not closed; put \"" + std::string(control_closing) + "\" behind its text");
      at_ = span.text_begin;
      return;
    }
    span.end = span.text_end + control_closing.size();
    result_.spans.push_back(span);
    at_ = span.end;
  }

  std::size_t next_control(std::size_t from) const {
    std::size_t at = page_.find(control_opening, from);
    while (at != npos && !starts_with_control(page_.substr(at))) at = page_.find(control_opening, at + 1);
    return at;
  }

  // A control may stand in a comment: an author comments out a part of a page without a look at what is in it.
  void comment() {
    const std::size_t end = page_.find("-->", at_ + 2);  // "<!-->" is a whole comment
    const std::size_t control = next_control_before(at_ + 4, end);
    in_comment_ = control != npos;
    if (control == npos && end != npos) published_mark(page_.substr(at_, end + 3 - at_));
    at_ = control != npos ? control : end != npos ? end + 3 : page_.size();
  }

  // `comment` may be one of the two around a published text.
  void published_mark(std::string_view comment) {
    if (comment.starts_with(published_opening)) {
      const std::string_view name = comment.substr(published_opening.size());
      published_ = PublishedSpan{.name = name.substr(0, name.size() - 3), .text_begin = at_ + comment.size()};
    } else if (comment == published_closing && published_) {
      published_->text_end = at_;
      result_.published.push_back(*std::exchange(published_, std::nullopt));
    }
  }

  std::size_t next_control_before(std::size_t from, std::size_t end) const {
    const std::string_view inside = page_.substr(0, end == npos ? page_.size() : end);
    std::size_t at = inside.find(control_opening, from);
    while (at != npos && !starts_with_control(page_.substr(at))) at = inside.find(control_opening, at + 1);
    return at;
  }

  void open_tag() {
    const std::size_t begin = at_ + 1;
    skip_tag();
    const std::string_view tag = page_.substr(begin);
    if (const std::string_view name = tag_name(tag); is_block(name)) in_paragraph_ = is_word(name, "p");
    if (result_.language.empty() && starts_with_word(tag, "html")) {
      result_.language = language_of(tag.substr(4, at_ - begin - 4));
    }
    for (const std::string_view name : text_elements) {
      if (!starts_with_word(tag, name) || tag.size() == name.size()) continue;
      const char after = tag[name.size()];
      if (is_space(after) || after == '>' || after == '/') return skip_to_end_tag(name);
    }
  }

  void skip_to_end_tag(std::string_view name) {
    for (at_ = page_.find("</", at_); at_ != npos; at_ = page_.find("</", at_ + 2)) {
      const std::string_view tag = page_.substr(at_ + 2);
      if (!starts_with_word(tag, name)) continue;
      if (tag.size() == name.size() || is_space(tag[name.size()]) || tag[name.size()] == '>' ||
          tag[name.size()] == '/') {
        return;
      }
    }
    at_ = page_.size();
  }

  // Past the ">" of the tag at the present place; one in a quoted attribute value does not end it.
  void skip_tag() {
    for (++at_; at_ < page_.size() && page_[at_] != '>'; ++at_) {
      if (page_[at_] != '=') continue;
      while (at_ + 1 < page_.size() && is_space(page_[at_ + 1])) ++at_;
      const char quote = at_ + 1 < page_.size() ? page_[at_ + 1] : '\0';
      if (quote != '"' && quote != '\'') continue;
      at_ = std::min(page_.find(quote, at_ + 2), page_.size() - 1);
    }
    if (at_ < page_.size()) ++at_;
  }

  static bool is_block(std::string_view name) {
    return std::any_of(std::begin(block_elements), std::end(block_elements),
                       [&](std::string_view element) { return is_word(name, element); });
  }

  std::string_view page_;
  std::size_t at_ = 0;
  bool in_comment_ = false;
  bool in_paragraph_ = false;
  std::optional<PublishedSpan> published_;  // the one that is open
  ScannedPage result_;
};

}  // namespace

ScannedPage scan_page(std::string_view page) { return Scanner(page).scan(); }

}  // namespace plexoras
