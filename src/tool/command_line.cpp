#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <sstream>

#include "authoring/suggestion.h"
#include "tool/commands.h"
#include "tool/version.h"

namespace plexoras {
namespace {

using Run = std::function<int(HeadlessPlatform&, Console&)>;

// Ties a command's options to its parser; they live as long as the returned function.
template <class Options>
Run running(int (*command)(const Options&, HeadlessPlatform&, Console&), std::shared_ptr<Options> options) {
  return [=](HeadlessPlatform& host, Console& console) { return command(*options, host, console); };
}

// An empty text here is a shell variable that nobody set: "-o ''" must not publish in place.
CLI::Validator given() {
  return {[](std::string& text) { return std::string(text.empty() ? "must not be empty" : ""); }, ""};
}

constexpr const char* csv_help =
    "Take the data from this delimited file and remember it for refresh; - reads standard input once";

// A flag with its opposite; of several the last one counts, and without any nothing is chosen.
CLI::Option* add_choice(CLI::App& app, const char* names, std::optional<bool>& choice, const std::string& help) {
  return app.add_flag(names, help)->check([&choice](const std::string& value) -> std::string {
    try {
      choice = CLI::detail::to_flag_value(value) > 0;
      return {};
    } catch (const std::invalid_argument&) {
      return "takes no value, or true or false, not \"" + value + "\"";
    }
  });
}

// An option whose text may be a word that stands for another text.
CLI::Option* add_text(CLI::App& app, const char* name, std::optional<std::string>& text,
                      std::string (*from_word)(std::string_view), const std::string& help) {
  return app.add_option_function<std::string>(
      name, [&text, from_word](const std::string& word) { text = from_word(word); }, help);
}

// How a delimited file is read: the same for every command that reads one. Where `file` is an option, they go with it.
void declare_import_flags(CLI::App& app, ImportRequest& request, CLI::Option* file = nullptr) {
  CLI::Option* const options[] = {
      add_text(app, "--delimiter", request.named.delimiter, delimiter_from_word,
               "Between the fields: any text, or comma (the default), semicolon, tab, blank or pipe")
          ->check(given()),
      add_text(app, "--qualifier", request.named.qualifier, qualifier_from_word,
               "Around fields that hold a delimiter: doublequote, singlequote, none (the default) or one byte"),
      add_choice(app, "--first-row,!--no-first-row", request.named.first_row, "The first line holds the column labels"),
      add_choice(app, "--first-col,!--no-first-col", request.named.first_col,
                 "The first field of each line labels its row"),
      app.add_flag("--guess", request.guess, "Look at the data for what is not given here, and say what was chosen"),
      app.add_option("--encoding", request.named.encoding,
                     "Turn the data into UTF-8 from this one; without it their bytes stay as they are")
          ->check(given()),
  };
  for (CLI::Option* const option : options) {
    if (file != nullptr) option->needs(file);
  }
}

Run declare_import(CLI::App& app) {
  auto options = std::make_shared<ImportOptions>();
  app.add_option("FILE", options->file, "Delimited text; - reads standard input")->required();
  declare_import_flags(app, options->request);
  return running(run_import, options);
}

Run declare_refresh(CLI::App& app) {
  auto options = std::make_shared<RefreshOptions>();
  app.add_option("PATH", options->paths, "Pages, or folders with pages")->required()->check(given());
  app.add_flag("--check", options->check, "Write nothing; exit status 1 when a chart is not up to date");
  return running(run_refresh, options);
}

Run declare_new(CLI::App& app) {
  auto options = std::make_shared<NewOptions>();
  app.add_option("PAGE", options->page, "The page; a small valid one is made where there is none")->required();
  app.add_option("--name", options->name, "The control's name, unique on its page")->required();
  app.add_option("--control", options->control, "Its type: chart or template; describe lists them")
      ->capture_default_str();
  app.add_option("--after", options->after, "Put it behind this text of the page")->check(given());
  app.add_option("--before", options->before, "Put it before this text of the page")->check(given());
  app.add_option("PROPERTY=VALUE", options->assignments, "Properties to set at once");
  CLI::Option* const csv = app.add_option("--csv", options->csv, csv_help)->check(given());
  declare_import_flags(app, options->import, csv);
  return running(run_new, options);
}

Run declare_get(CLI::App& app) {
  auto options = std::make_shared<GetOptions>();
  app.add_option("PAGE[#NAME]", options->target, "A control of a page, or all of them")->required();
  app.add_option("PROPERTY", options->properties, "One prints its bare value, several or none NAME=VALUE lines");
  app.add_flag("--changed", options->changed, "Only what differs from a new control");
  return running(run_get, options);
}

Run declare_set(CLI::App& app) {
  auto options = std::make_shared<SetOptions>();
  app.add_option("PAGE#NAME", options->target, "A control of a page")->required();
  app.add_option("PROPERTY=VALUE", options->assignments, "Properties to set, in this order");
  app.add_option("--from", options->from,
                 "First set the PROPERTY=VALUE lines of this file, as get prints them; - reads standard input");
  app.add_flag("--custom", options->custom, "Take properties that the template does not declare");
  CLI::Option* const csv = app.add_option("--csv", options->csv, csv_help)->check(given());
  declare_import_flags(app, options->import, csv);
  return running(run_set, options);
}

// What authors do on a page. Their order counts across all of these, so each is noted as soon as it is read.
struct ActionOption {
  FormAction::Kind kind;
  const char* option;
  const char* value;
  const char* help;
};
constexpr ActionOption action_options[] = {
    {FormAction::Kind::Set, "--set", "CONTROL=VALUE", "A text, on or off, an entry or #INDEX"},
    {FormAction::Kind::Click, "--click", "CONTROL", "Click a button, check box or option button"},
    {FormAction::Kind::Key, "--key", "CONTROL=KEY", "Press Enter, Up or Down in a text box"},
    {FormAction::Kind::Focus, "--focus", "CONTROL", "Go to a text box"},
    {FormAction::Kind::Call, "--call", "CONTROL.MEMBER=ARGUMENTS", "Call a component: tbl.selectCell=0,2"},
    {FormAction::Kind::ChooseFile, "--file", "PATH", "Answer the file dialog that was opened"},
};

Run declare_page(CLI::App& app) {
  auto options = std::make_shared<PropertyPageOptions>();
  app.add_option("PAGE#NAME", options->target, "A control of a page")->required()->check(given());
  app.add_option("PROPERTY-PAGE", options->property_page, "The page; without it they are listed")->check(given());
  for (const ActionOption& row : action_options) {
    const auto note = [&actions = options->actions, &row](const std::string& value) {
      actions.push_back({row.kind, row.option, value});
    };
    app.add_option_function<std::string>(row.option, note, row.help)->type_name(row.value)->trigger_on_parse();
  }
  app.add_flag("--apply", options->apply, "Apply it in the end, and write the file");
  return running(run_page, options);
}

Run declare_describe(CLI::App& app) {
  auto options = std::make_shared<DescribeOptions>();
  app.add_option("CONTROL", options->control, "A kind of control: chart or template; without it they are listed");
  app.add_option("PROPERTY", options->property, "One of its properties");
  return running(run_describe, options);
}

Run declare_image(CLI::App& app) {
  auto options = std::make_shared<ImageOptions>();
  app.add_option("PAGE#NAME", options->target, "A chart of a page")->required();
  app.add_option("-o,--output", options->output, "The file to write; - writes standard output")
      ->required()
      ->check(given());
  return running(run_image, options);
}

Run declare_publish(CLI::App& app) {
  auto options = std::make_shared<PublishOptions>();
  app.add_option("PATH", options->paths, "Pages, or folders with pages")->required()->check(given());
  CLI::Option* const output =
      app.add_option("-o,--output", options->output,
                     "Write a mirror of the site into this folder; without it pages are published in place");
  output->check(given());
  app.add_flag("--snapshot", options->snapshot,
               "Put a picture of each chart into the page, for readers without scripts; needs Node 18 or later");
  app.add_flag("--keep-state", options->keep_state,
               "With -o: keep the state of controls in the pages, so that they can be worked on there, too")
      ->needs(output);
  return running(run_publish, options);
}

Run declare_expand(CLI::App& app) {
  auto options = std::make_shared<ExpandOptions>();
  app.add_option("FILE", options->file, "The template file")->required();
  app.add_option("SECTION", options->section, "The section; an empty name takes the whole file")->required();
  app.add_option("-D", options->definitions, "Define a variable: NAME=VALUE")->allow_extra_args(false);
  app.add_flag("--variables", options->variables, "Print the variables instead of the text, NAME<TAB>VALUE a line");
  app.add_flag("--step", options->step, "Stop at #HALT and, on wish, before each line behind it");
  app.add_flag("--step-first", options->step_first, "Stop before the first line of text or macro call, too");
  app.add_option("--nesting", options->nesting, "How deep expansion may nest")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  app.add_option("--text-limit", options->text_mebibytes, "How many MiB of text expansion may make")
      ->check(CLI::Range(1, 65536))
      ->capture_default_str();
  return running(run_expand, options);
}

Run declare_check(CLI::App& app) {
  auto options = std::make_shared<CheckOptions>();
  app.add_option("PATH", options->paths, "Templates, pages, or folders with both")->check(given());
  app.add_flag("--werror", options->warnings_are_errors, "Let warnings count as errors");
  app.add_flag("--rules", options->rules, "List what is looked for");
  app.add_option("--explain", options->explain, "Say what a rule means, with an example")->type_name("RULE");
  return running(run_check, options);
}

// The table makes the parsers, the help and the words to suggest.
struct CommandRow {
  const char* name;
  const char* summary;
  const char* examples;  // first in its help
  bool writes;           // has --dry-run
  Run (*declare)(CLI::App& app);
};

constexpr CommandRow commands[] = {
    {"new", "Put a control on a page",
     "  plexoras new index.html --name Sales\n"
     "  plexoras new index.html --name Sales --csv sales.csv --guess\n"
     "  plexoras new index.html --name Tip --control template KIND=tip TEXT='Try the filter.'\n"
     "  plexoras new index.html --name Share --after '<h2>Market</h2>' DiagramType=4 width=400\n",
     true, declare_new},
    {"get", "Print properties of controls",
     "  plexoras get index.html#Sales FontSize\n"
     "  plexoras get index.html#Sales --changed\n"
     "  plexoras get index.html --json\n",
     false, declare_get},
    {"set", "Change properties of a control",
     "  plexoras set index.html#Sales DiagramType=1 HasLegend=True\n"
     "  plexoras set index.html#Sales --csv sales.csv --first-row --first-col\n"
     "  plexoras get a.html#Sales --changed | plexoras set b.html#Sales --from -\n",
     true, declare_set},
    {"page", "Show a property page of a control, and work on it as its author",
     "  plexoras page index.html#Sales                 its property pages\n"
     "  plexoras page index.html#Sales Styles          one of them, with its controls\n"
     "  plexoras page index.html#Sales Styles --set chkHasLegend=off --apply\n"
     "  plexoras page index.html#Sales Styles --click cmdMenuBuilder \\\n"
     "    --click rbCustomMenu --set txtCaption=Help --set 'txtJavaScript=help()' \\\n"
     "    --click cmdOK --apply\n"
     "Actions are done in the order given; a dialog that one opens takes those behind\n"
     "it until it closes. What a type of chart enables follows the type that the chart\n"
     "has: apply a new one first.\n",
     true, declare_page},
    {"describe", "Say what controls and properties there are",
     "  plexoras describe                          the kinds of controls\n"
     "  plexoras describe chart                    the properties of charts\n"
     "  plexoras describe chart DiagramType        one of them, with its codes\n",
     false, declare_describe},
    {"image", "Write the picture of a chart into a file", "  plexoras image index.html#Sales -o sales.svg\n", true,
     declare_image},
    {"import", "Make a contents document of delimited text",
     "  plexoras import sales.csv --first-row --first-col\n"
     "  plexoras import export.txt --guess > sales.xml\n"
     "  plexoras import - --delimiter tab --qualifier doublequote < sales.tab\n",
     false, declare_import},
    {"refresh", "Give charts the present data of the files that they remember",
     "  plexoras refresh site              every chart that was given data with --csv\n"
     "  plexoras refresh index.html -n     only say what would change\n"
     "  plexoras refresh site --check      the same; exit status 1 when a chart is not up to date\n",
     true, declare_refresh},
    {"publish", "Make the pages that readers get",
     "  plexoras publish site -o public      a mirror of the site, published\n"
     "  plexoras publish index.html          in place\n"
     "  plexoras publish site -o public --snapshot\n"
     "                                       with pictures for readers without scripts\n"
     "  plexoras publish site -o public -n   only say what would change\n",
     true, declare_publish},
    {"expand", "Run one section of a template file and print its text",
     "  plexoras expand DIAGRAM.DAT TEMPLATE -D WIDTH=400 -D APPLETID=Sales\n"
     "  plexoras expand DIAGRAM.DAT PROPERTY --variables\n"
     "  plexoras expand NOTICE.DAT TEMPLATE --step-first -D KIND=tip\n",
     false, declare_expand},
    {"check", "Say what is wrong with templates and pages",
     "  plexoras check site NOTICE.DAT       folders are searched for templates (*.DAT) and pages\n"
     "  plexoras check --rules               what is looked for\n"
     "  plexoras check --explain stray-else  what one of the rules means\n",
     false, declare_check},
};

constexpr const char* exit_statuses =
    "\nExit status: 0 done, 1 the work failed (the message says what, where and how to\n"
    "mend it), 2 wrong usage, 130 interrupted. Results go to standard output,\n"
    "everything else to standard error.\n";

// Examples first: they answer most questions.
class ExamplesFirst : public CLI::Formatter {
public:
  std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
    if (mode != CLI::AppFormatMode::Normal) return Formatter::make_help(app, name, mode);
    const bool is_command = app->get_parent() != nullptr;
    std::string text = app->get_description() + ".\n\n";
    text += is_command ? "Examples:\n" + app->get_footer() + "\n" : "";
    text += make_usage(app, name);
    text += make_positionals(app);
    text += make_groups(app, mode);
    text += make_subcommands(app, mode);
    return text + (is_command ? "" : "\nplexoras COMMAND --help shows examples and options.\n") + exit_statuses;
  }
};

void declare_common(CLI::App& app, CommonOptions& common, bool writes) {
  app.set_help_flag("-h,--help", "Show this help");
  app.add_flag("--json", common.json, "Print JSON, one object a line");
  app.add_flag("-q,--quiet", common.quiet, "Say nothing but problems");
  app.add_flag("-v,--verbose", common.verbose, "Say what is done");
  if (writes) app.add_flag("-n,--dry-run", common.dry_run, "Write nothing");
  app.add_option("--color", common.color, "Colours in messages")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str();
}

// What follows the options, or looks like one, and is not expected. Of the parser's own message the order is wrong, and
// it suggests nothing.
[[noreturn]] void refuse_extras(const CLI::App& command) {
  std::vector<std::string> extras = command.remaining();
  std::string listed;
  for (const std::string& extra : extras) listed += " " + extra;
  std::vector<std::string> names;
  for (const CLI::Option* const option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  const auto unknown = std::ranges::find_if(extras, [](const std::string& text) { return text.starts_with("--"); });
  const std::string suggestion =
      unknown == extras.end() ? "" : did_you_mean(unknown->substr(0, unknown->find('=')), names);
  throw UsageError("plexoras " + command.get_name() + ": not expected:" + listed + suggestion + "\nplexoras " +
                   command.get_name() + " --help shows what is");
}

// A first word that is no command is the commonest mistake, and the parser's own message is no help with it.
void check_command(int argc, const char* const* argv) {
  if (argc < 2 || argv[1][0] == '-') return;
  std::vector<std::string> names;
  for (const CommandRow& row : commands) names.emplace_back(row.name);
  if (std::find(names.begin(), names.end(), argv[1]) != names.end()) return;
  throw UsageError("there is no command \"" + std::string(argv[1]) + "\"" + did_you_mean(argv[1], names) +
                   "\nplexoras --help lists the commands");
}

}  // namespace

std::optional<Invocation> parse_command_line(int argc, const char* const* argv) {
  CLI::App app("Puts charts on web pages and publishes them as plain pages that work everywhere", "plexoras");
  app.set_version_flag("--version", "plexoras " + std::string(version));
  app.set_help_flag("-h,--help", "Show this help");
  app.formatter(std::make_shared<ExamplesFirst>());
  app.require_subcommand(1);

  auto common = std::make_shared<CommonOptions>();
  Run chosen;
  for (const CommandRow& row : commands) {
    CLI::App* command = app.add_subcommand(row.name, row.summary);
    command->footer(row.examples);
    const Run run = row.declare(*command);
    declare_common(*command, *common, row.writes);
    command->callback([&chosen, run] { chosen = run; });
  }

  if (argc < 2) {
    Console({}).result(app.help());
    return std::nullopt;
  }
  try {
    check_command(argc, argv);
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {
    std::ostringstream text;
    app.exit(wanted, text, text);
    Console({}).result(text.str());
    return std::nullopt;
  } catch (const CLI::ExtrasError& error) {
    for (const CLI::App* const command : app.get_subcommands()) {
      if (command->remaining_size() > 0) refuse_extras(*command);
    }
    throw UsageError(error.what());
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  return Invocation{*common, chosen};
}

}  // namespace plexoras
