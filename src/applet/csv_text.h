#pragma once

#include <string>
#include <string_view>

#include "applet/contents_reader.h"

namespace plexoras {

/// The table as comma-separated text.
///
///     Region,Q1,Q2
///     North,1,"2,5"
///
/// The first record is the header: the row title, then the column labels. The first field of each further record
/// is the row's label. Both always stand there, empty where the table has no labels, so that `contents_from_csv` gives
/// back the same table, apart from its column title and value title, which have no place in the text. Records end in
/// CR LF. A field is quoted where it holds a comma, a quote or a line break, and where it is empty and alone in its
/// record, which a reader would take for an empty line. A table with nothing in it gives the empty text.
std::string write_csv(const ContentsTable& table);

/// The contents document of comma-separated text, of the form that `write_csv` makes.
///
/// Records may end in CR LF, LF or CR; empty lines are passed over. A field that begins with a quote ends at the next
/// single one, and a doubled quote in it stands for one. A header of empty fields gives no column labels, and when the
/// label of every row is empty the rows carry none. Short records are filled up with empty values, so that every value
/// stays in its column. A text without records gives `empty_contents_document`.
///
/// Error 5 with "line:column: what is wrong" for a quote that is never closed or is followed by text, and for records
/// so short that filling them up would take millions of values.
std::string contents_from_csv(std::string_view csv);

}  // namespace plexoras
