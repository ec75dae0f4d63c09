#include "contents/import_lists.h"

#include <string>
#include <utility>

#include "contents/contents_document.h"
#include "host/automation.h"

namespace plexoras {
namespace {

constexpr ShortText unlabelled_row = {"<row/>"};

}  // namespace

const ImportLists::Place ImportLists::corner = {ImportLists::rows, {""}, {""}, {""}};
const ImportLists::Place ImportLists::column = {ImportLists::columns, {"<col>"}, {"</>"}, {"</><col>"}};
const ImportLists::Place ImportLists::row_label = {ImportLists::rows, {"<row>"}, {"</>"}, {"</><row>"}};
const ImportLists::Place ImportLists::value = {ImportLists::values, {"<value>"}, {"</>"}, {"</><value>"}};

ImportLists::ImportLists(bool first_row, bool first_col)
    : first_col_(first_col),
      in_label_line_(first_row),
      first_(first_row ? (first_col ? &corner : &column) : (first_col ? &row_label : &value)),
      rest_(first_row ? &column : &value) {}

char* ImportLists::begin_line(char* pen) {
  keep(pen);
  if (empty_row_is_pending_) add_pending_row();
  if (!first_col_ && !in_label_line_) write_to(rows, unlabelled_row);
  pen = go_to(*first_, this->pen());
  return place_->opening.write(pen);
}

char* ImportLists::end_line(char* pen) {
  keep(pen);
  const bool had_fields = std::exchange(place_, nullptr) != nullptr;
  if (in_label_line_) {
    // The corner is its only field that must be there.
    if (!had_fields && first_col_) no_label(line_);
    in_label_line_ = false;
    first_ = first_col_ ? &row_label : &value;
    rest_ = &value;
  } else if (!had_fields) {
    if (empty_row_is_pending_) add_pending_row();
    empty_row_is_pending_ = true;
  }
  ++line_;
  return this->pen();
}

void ImportLists::add_pending_row() {
  if (first_col_) no_label(line_ - 1);
  write_to(rows, unlabelled_row);
  empty_row_is_pending_ = false;
}

void ImportLists::renew(std::size_t list) {
  Pen& pen = pens_[list];
  TextPieces& text = texts_[list];
  if (pen.at != nullptr) text.extend(static_cast<std::size_t>(pen.at - text.room(0).data()));
  const std::span<char> room = text.room(room_for_step);
  pen = {room.data(), room.data() + room.size()};
}

TextPieces ImportLists::take(List list) {
  const Pen pen = std::exchange(pens_[list], {});
  if (pen.at != nullptr) texts_[list].extend(static_cast<std::size_t>(pen.at - texts_[list].room(0).data()));
  return std::move(texts_[list]);
}

TextPieces ImportLists::finish(bool saw_bytes) {
  TextPieces document;
  if (!saw_bytes) {
    document.append(empty_contents_document);
    return document;
  }
  document.append("<xml><rows>");
  document.append(take(rows));
  document.append("</><cols>");
  document.append(take(columns));
  document.append("</><data>");
  document.append(take(values));
  document.append("</></xml>");
  return document;
}

void ImportLists::no_label(std::size_t line) const {
  throw AutomationError(RunTimeError::SubscriptOutOfRange,
                        "Line " + std::to_string(line) +
                            " is empty, but its first field is to be a label; take the line "
                            "out, or import without labels in the first column",
                        "DelimitedImport");
}

}  // namespace plexoras
