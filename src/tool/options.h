#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "authoring/data_source.h"
#include "authoring/form_driver.h"

namespace plexoras {

// What each command was asked for: the command line as plain data.

struct CommonOptions {
  bool quiet = false;
  bool verbose = false;
  bool json = false;
  bool dry_run = false;
  std::string color = "auto";
};

struct ExpandOptions {
  std::string file;
  std::string section;
  std::vector<std::string> definitions;  ///< NAME=VALUE
  bool variables = false;
  bool step = false;
  bool step_first = false;
  std::size_t nesting = 256;
  std::size_t text_mebibytes = 64;
};

struct ImportOptions {
  std::string file;  ///< "-" for standard input
  ImportRequest request;
};

struct CheckOptions {
  std::vector<std::string> paths;
  bool rules = false;
  std::string explain;  ///< a rule's name
  bool warnings_are_errors = false;
};

struct NewOptions {
  std::string page;
  std::string name;
  std::string control = "chart";
  std::string after;
  std::string before;
  std::string csv;  ///< a file of data, "-" for standard input
  ImportRequest import;
  std::vector<std::string> assignments;  ///< PROPERTY=VALUE
};

struct GetOptions {
  std::string target;  ///< PAGE or PAGE#NAME
  std::vector<std::string> properties;
  bool changed = false;
};

struct SetOptions {
  std::string target;
  std::vector<std::string> assignments;
  std::string from;  ///< a file of PROPERTY=VALUE lines, "-" for standard input
  std::string csv;   ///< a file of data, "-" for standard input
  ImportRequest import;
  bool custom = false;
};

/// An author's action on a property page, as it was given.
struct PageActionText {
  FormAction::Kind kind;
  std::string option;  ///< "--set"
  std::string value;
};

struct PropertyPageOptions {
  std::string target;
  std::string property_page;
  std::vector<PageActionText> actions;  ///< in the order given
  bool apply = false;
};

struct DescribeOptions {
  std::string control;
  std::string property;
};

struct ImageOptions {
  std::string target;
  std::string output;  ///< "-" for standard output
};

struct PublishOptions {
  std::vector<std::string> paths;
  std::string output;
  bool snapshot = false;
  bool keep_state = false;
};

struct RefreshOptions {
  std::vector<std::string> paths;
  bool check = false;
};

}  // namespace plexoras
