#include "applet/table_members.h"

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "applet/contents_reader.h"
#include "applet/csv_text.h"
#include "applet/diagram_applet.h"
#include "applet/table_model.h"

namespace plexoras {
namespace {

using Cell = TableModel::Cell;

// Nothing is no number, though it converts to 0: a cell without a number gives it.
double number_in(const Variant& value) {
  if (value.is_nothing()) throw AutomationError(RunTimeError::TypeMismatch, "Type mismatch: Nothing is not a number");
  const double number = value.to_double();
  if (!std::isfinite(number)) throw AutomationError(RunTimeError::Overflow);
  return number;
}

// The values of a row or column that is to be inserted, as `newValueList` gives them out.
class ValueList final : public AutomationObject {
public:
  const std::vector<double>& numbers() const { return numbers_; }

  Variant get(std::string_view member) override { return get_member(*this, rows, member, source); }
  void put(std::string_view member, const Variant& value) override { put_member(*this, rows, member, value, source); }
  Variant call(std::string_view member, Arguments arguments) override {
    return call_member(*this, rows, member, arguments, source);
  }

private:
  static Variant count(ValueList& list) { return static_cast<std::int32_t>(list.numbers_.size()); }
  static Variant add_element(ValueList& list, Arguments arguments) {
    list.numbers_.push_back(number_in(arguments[0]));
    return {};
  }

  static constexpr std::string_view source = diagram_applet_identifier;
  static constexpr Member<ValueList> rows[] = {
      {.name = "count", .get = count},
      {.name = "addElement", .call = add_element, .arguments = 1},
  };

  std::vector<double> numbers_;
};

bool is_valid_contents(std::string_view document) {
  try {
    read_contents(document);
    return true;
  } catch (const AutomationError&) {
    return false;
  }
}

Variant xml_contents(TableModel& table) { return table.document(); }

void put_xml_contents(TableModel& table, const Variant& value) {
  std::string document = value.to_text();
  ContentsTable contents = read_contents(document);
  table.put_document(std::move(document), std::move(contents));
}

Variant xml_contents_in_lines(TableModel& table, Arguments arguments) {
  return table.document(arguments[0].to_boolean() ? ContentsLayout::Lines : ContentsLayout::Compact);
}

Variant is_valid_xml_contents(TableModel&, Arguments arguments) { return is_valid_contents(arguments[0].to_text()); }

Variant csv_contents(TableModel& table) { return write_csv(table.table()); }

void put_csv_contents(TableModel& table, const Variant& value) {
  table.put_document(contents_from_csv(value.to_text()));
}

template <TableModel::Title Which>
Variant title(TableModel& table) {
  return table.title(Which);
}

template <TableModel::Title Which>
void put_title(TableModel& table, const Variant& value) {
  table.set_title(Which, value.to_text());
}

Variant row_count(TableModel& table) { return table.row_count(); }
Variant column_count(TableModel& table) { return table.column_count(); }

Variant selected_row(TableModel& table) { return table.selection().row; }
Variant selected_column(TableModel& table) { return table.selection().column; }

void put_selected_row(TableModel& table, const Variant& value) {
  table.select({value.to_long(), table.selection().column});
}

void put_selected_column(TableModel& table, const Variant& value) {
  table.select({table.selection().row, value.to_long()});
}

Variant select_cell(TableModel& table, Arguments arguments) {
  table.select({arguments[0].to_long(), arguments[1].to_long()});
  return {};
}

Variant cell_value(TableModel& table, Arguments arguments) {
  const std::optional<double> number = table.cell_number(arguments[0].to_long(), arguments[1].to_long());
  return number ? Variant(*number) : Variant();
}

Variant cell_text(TableModel& table, Arguments arguments) {
  return table.cell_text(arguments[0].to_long(), arguments[1].to_long());
}

Variant set_cell_value(TableModel& table, Arguments arguments) {
  table.set_cell(arguments[0].to_long(), arguments[1].to_long(), number_in(arguments[2]));
  return {};
}

Variant row_label(TableModel& table, Arguments arguments) { return table.row_label(arguments[0].to_long()); }
Variant column_label(TableModel& table, Arguments arguments) { return table.column_label(arguments[0].to_long()); }

Variant set_row_label(TableModel& table, Arguments arguments) {
  table.set_row_label(arguments[0].to_long(), arguments[1].to_text());
  return {};
}

Variant set_column_label(TableModel& table, Arguments arguments) {
  table.set_column_label(arguments[0].to_long(), arguments[1].to_text());
  return {};
}

Variant new_value_list(TableModel&, Arguments) { return ObjectRef(std::make_shared<ValueList>()); }

template <void (TableModel::*Insert)(TableModel::Index, std::string, std::span<const double>)>
Variant insert(TableModel& table, Arguments arguments) {
  const ObjectRef object = arguments[2].type() == ValueType::Object ? arguments[2].to_object() : nullptr;
  const auto* list = dynamic_cast<const ValueList*>(object.get());
  if (list == nullptr) {
    throw AutomationError(RunTimeError::TypeMismatch, "Type mismatch: the values must be a list from newValueList");
  }
  (table.*Insert)(arguments[0].to_long(), arguments[1].to_text(), list->numbers());
  return {};
}

template <void (TableModel::*Delete)(TableModel::Index)>
Variant remove(TableModel& table, Arguments arguments) {
  (table.*Delete)(arguments[0].to_long());
  return {};
}

constexpr Member<TableModel> rows[] = {
    {"XmlContents", xml_contents, put_xml_contents},
    {.name = "getXmlContents", .call = xml_contents_in_lines, .arguments = 1},
    {.name = "isValidXmlContents", .call = is_valid_xml_contents, .arguments = 1},
    {"CsvContents", csv_contents, put_csv_contents},
    {"rowTitle", title<&ContentsTable::row_title>, put_title<&ContentsTable::row_title>},
    {"colTitle", title<&ContentsTable::column_title>, put_title<&ContentsTable::column_title>},
    {"valueTitle", title<&ContentsTable::value_title>, put_title<&ContentsTable::value_title>},
    {.name = "rowCount", .get = row_count},
    {.name = "colCount", .get = column_count},
    {"selectedRow", selected_row, put_selected_row},
    {"selectedCol", selected_column, put_selected_column},
    {.name = "selectCell", .call = select_cell, .arguments = 2},
    {.name = "getCellValue", .call = cell_value, .arguments = 2},
    {.name = "setCellValue", .call = set_cell_value, .arguments = 3},
    {.name = "getCellText", .call = cell_text, .arguments = 2},
    {.name = "getRowLabel", .call = row_label, .arguments = 1},
    {.name = "setRowLabel", .call = set_row_label, .arguments = 2},
    {.name = "getColLabel", .call = column_label, .arguments = 1},
    {.name = "setColLabel", .call = set_column_label, .arguments = 2},
    {.name = "newValueList", .call = new_value_list},
    {.name = "insertRow", .call = insert<&TableModel::insert_row>, .arguments = 3},
    {.name = "insertCol", .call = insert<&TableModel::insert_column>, .arguments = 3},
    {.name = "deleteRow", .call = remove<&TableModel::delete_row>, .arguments = 1},
    {.name = "deleteCol", .call = remove<&TableModel::delete_column>, .arguments = 1},
};

}  // namespace

bool is_table_member(std::string_view member) { return find_member(rows, member) != nullptr; }

Variant get_table_member(TableModel& table, std::string_view member) {
  return get_member(table, rows, member, diagram_applet_identifier);
}

void put_table_member(TableModel& table, std::string_view member, const Variant& value) {
  put_member(table, rows, member, value, diagram_applet_identifier);
}

Variant call_table_member(TableModel& table, std::string_view member, Arguments arguments) {
  return call_member(table, rows, member, arguments, diagram_applet_identifier);
}

}  // namespace plexoras
