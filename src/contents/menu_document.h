#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "contents/menu_node.h"
#include "template/dictionary.h"

namespace plexoras {

/// The menu document of a popup menu.
///
///     write_menu_document({{{.Caption = "A", .Param = "f()"}}}, commands);
///     // <xml><ITEM type="script" param="f()">A</></>
///
/// `commands` maps the names of built-in commands to "type:param", as in "java:print"; a value without a colon is all
/// type. An entry whose command has no value there gets the type "java" and an empty param.
///
/// Kept: an entry followed by a deeper one is a submenu, whose kind and Param are not written; a double quote in a
/// script is written as an apostrophe; a separator's caption is not written, not even when it is a submenu; a built-in
/// item's type and param are written without escapes.
std::string write_menu_document(std::span<const MenuNode> nodes, const Dictionary& commands);

/// The entries of a menu document, which need not be well formed: it is read as far as its tags go, up to the first
/// missing ">" or "<". Error 9 when it has more entries than `menu_capacity`, error 6 when so many end tags come before
/// an entry that its level is no 16-bit number.
///
/// A built-in item's Param is the first key of `commands` whose value is its type and param, and empty without one.
///
/// Kept: of the escapes "&tab;" alone stays as it stands; tags are not matched, so that after the root was closed the
/// next tag is taken for a root again.
std::vector<MenuNode> read_menu_document(std::string_view document, const Dictionary& commands);

}  // namespace plexoras
