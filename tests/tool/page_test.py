"""Runs `plexoras page`, `describe` and `image` as their users do: an author at work on property pages.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import json
import os

from tool_case import ToolTest, main

TABLE = "Region;Q1;Q2\nNorth;1;2\nR&D <new>;3;4\n"


class AuthorTest(ToolTest):
    """A page that holds a chart and a notice."""

    def setUp(self):
        super().setUp()
        self.done("new", "a.html", "--name", "Sales")
        self.done("new", "a.html", "--name", "Tip", "--control", "template")

    def text(self, name="a.html"):
        return self.read(name).decode()

    def work(self, page, actions, control="Sales", status=0):
        """Plays `actions`, one "--option value" a line, and applies them."""
        arguments = [word for line in actions.strip().splitlines() for word in line.strip().split(" ", 1)]
        return self.said("page", "a.html#" + control, page, *arguments, "--apply", status=status)

    def get(self, name, control="Sales"):
        return self.said("get", "a.html#" + control, name)[0].rstrip("\n")

    def form(self, page, *arguments, control="Sales", status=0):
        """The page's controls by name."""
        output, _ = self.said("page", "a.html#" + control, page, *arguments, "--json", status=status)
        found = json.loads(output)
        controls = {}
        waiting = list(found["form"]["controls"])
        while waiting:
            row = waiting.pop()
            controls[row["name"]] = row
            waiting += row.get("controls", [])
        return found, controls


class Page(AuthorTest):
    def test_what_is_applied_on_each_page_is_in_the_control(self):
        cases = [
            ("Styles", "--set cmbDiagramType=Line\n--click chkHasLegend\n--set cmbFontSize=14\n--click chkIsAbsolute\n--set yScaleMin=1.5",
             {"DiagramType": "1", "HasLegend": "False", "FontSize": "14", "yScaleMin": "1.5"}),
            ("chart styles", "--set cmbPieStyle=#1\n--set rbDraw=on\n--click cbIsRotated",
             {"PieStyle": "1", "CurveStyle": "1", "IsRotated": "True"}),
            ("TableStyles", "--set rbCell=1\n--click rbMulti\n--set txtFixedRows=2\n--set chkRedNegativeValues=on",
             {"SelectionMode": "3", "MultipleSelection": "True", "FixedRows": "2", "negativeForeColor": "red"}),
            ("Format", "--click chkUseDefaultLocale\n--set cmbLanguage=de\n--click cbPattern\n--set txtPattern=0.0",
             {"FormatLanguage": "de", "FormatType": "0", "FormatPattern": "0.0", "FormatUseDefaultLocale": "False"}),
            ("Events", "--set lstEvents=plexoras-select\n--set txtScript=go(event)\n--set lstEvents=#0\n"
             "--set lstEvents=plexoras-select\n--set txtScript=stop()", {"ONSELECT": "stop()"}),
            ("Custom", "--set CAPTION=Sales by region\n--set HASMENU=off",
             {"CAPTION": "Sales by region", "HASMENU": "False"}),
        ]
        for page, actions, expected in cases:
            with self.subTest(page=page):
                _, talk = self.work(page, actions)
                self.assertTrue(talk.endswith(": written\n"), talk)
                self.assertEqual({name: self.get(name) for name in expected}, expected)
        self.work("Custom", "--set KIND=Tip\n--set TEXT=Try <it>", control="Tip")
        self.said("publish", "a.html", status=None)  # fails where the script that draws charts is not installed
        self.assertIn("Try &lt;it&gt;", self.text())
        self.assertIn("stop()", self.text())

    def test_a_menu_is_built_in_its_dialog(self):
        self.work("Styles", """--click chkHasPopupMenu
            --click cmdMenuBuilder
            --click rbCustomMenu
            --set txtCaption=Help
            --set txtJavaScript=help()
            --key txtCaption=Enter
            --set txtCaption=More
            --click rbSeparator
            --click cmdOK
            --click chkHasBorder""")
        self.assertEqual(self.get("USEMENU"), "Yes")
        self.assertIn('<ITEM type="script" param="help()">Help</>', self.get("MENU"))
        self.assertEqual(self.get("HasBorder"), "True")
        menu = self.get("MENU")
        self.work("Styles", "--click chkHasBorder")
        self.assertEqual(self.get("MENU"), menu)

    def test_contents_are_imported_and_edited_in_a_table(self):
        self.write("data/t.csv", TABLE)
        self.work("Contents", """--click cmdImportFile
            --click cmdBrowse
            --file data/t.csv
            --set rbSemicolon=on
            --set ckFirstRow=on
            --set ckFirstCol=on
            --click cmdImport
            --click cmdTable
            --call tbl.selectCell=1,0
            --set txtValue=99
            --set txtValTitle=EUR
            --click cmdAccept""")
        self.assertEqual(self.get("CsvContents"), 'Region,Q1,Q2\r\nNorth,1,2\r\nR&D <new>,99,4\r')
        self.assertEqual(self.get("valueTitle"), "EUR")

    def test_a_dialog_without_an_answer_is_closed_and_shown(self):
        before = self.text()
        cases = [
            ("Styles", "--click chkHasBorder\n--click cmdAbout", 'The dialog "About":\n', "Plexoras DTC"),
            ("Contents", "--click cmdTable", 'The dialog "Chart Data":\n', "3 rows, 4 columns; selected: row none"),
        ]
        for page, actions, *shown in cases:
            output, talk = self.work(page, actions, status=1)
            for text in shown:
                self.assertIn(text, output)
            self.assertIn("was left open, and closed without an answer", talk)
            self.assertIn(": nothing was written\n", talk)
        _, talk = self.work("Contents", "--click cmdImportFile\n--click cmdBrowse\n--click cmdCancel", status=1)
        self.assertIn("answer it with --file PATH", talk)
        found, _ = self.form("Styles", "--click", "cmdAbout", status=1)
        self.assertEqual(found["dialog"]["caption"], "About")
        self.assertEqual(self.text(), before)

    def test_message_boxes_are_errors(self):
        before = self.text()
        _, talk = self.work("Contents", "--set txtContents=<xml\n--click cmdSet", status=1)
        self.assertIn("plexoras: error: a.html#Sales Contents: --click cmdSet: Cannot show malformatted XML\n", talk)
        found, _ = self.form("Contents", "--set", "txtContents=<xml", "--click", "cmdSet", "--apply", status=1)
        self.assertEqual((found["messages"], found["outcome"]), (["Cannot show malformatted XML"], "unchanged"))
        self.assertEqual(found["problems"], [{"severity": "error", "action": "--click cmdSet",
                                              "message": "Cannot show malformatted XML"}])
        self.assertEqual(self.text(), before)

    def test_what_cannot_be_done_is_refused_and_nothing_is_written(self):
        before = self.text()
        cases = [
            ("Styles", "--click chkHasBorder\n--set chkHasLegnd=on", 1,
             'a.html#Sales Styles: --set chkHasLegnd=on: there is no control "chkHasLegnd" on "Styles"; did you mean '
             '"chkHasLegend"?'),
            ("Styles", "--set txtBucketCount=3", 1, '"txtBucketCount" cannot be used: it is disabled'),
            ("Styles", "--set cmbDiagramType=Lines", 1, '(it has: Histogram | Line | '),
            ("Styles", "--set cmbFontSize=#99", 1, 'has no entry "#99" (it has 15, #0 to #14)'),
            ("Contents", "--click cmdImportFile\n--click cmdBrowse\n--file nope.csv\n--click cmdImport", 1,
             "a.html#Sales Contents: --file nope.csv: No such file or directory\n"),
            ("Styles", "--click cmdAbout\n--click cmdCancel", 1, '--click cmdCancel: there is no control "cmdCancel" on "About"'),
            ("Contents", "--file t.csv", 1, "no dialog asks for a file here"),
            ("Contents", "--click cmdTable\n--call tbl.fly=1", 1, 'support this property or method: "fly"\n'),
            ("Contents", "--click cmdTable\n--call tbl.selectCell=99999999999,0", 1, "Overflow"),
            ("Contents", "--call tbl.selectCell=1,", 2, "arguments are numbers"),
            ("Stiles", "--click chkHasBorder", 1, 'did you mean "Styles"?'),
            ("Styles", "--set chkHasBorder", 2, "--set takes CONTROL=VALUE"),
            ("Styles", "--clck chkHasBorder", 2, 'did you mean "--click"?'),
            ("", "--click chkHasBorder", 2, "PROPERTY-PAGE: must not be empty"),
        ]
        for page, actions, status, expected in cases:
            with self.subTest(page=page, actions=actions):
                output, talk = self.work(page, actions, status=status)
                self.assertIn(expected, talk)
                self.assertEqual(output, "")
        self.said("page", "a.html#Sales", "--apply", status=2)
        self.said("page", "a.html#Tip", "Styles", status=1)
        self.assertEqual(self.text(), before)

    def test_a_setting_that_takes_no_such_value_is_not_applied(self):
        self.write("config/PlexorasDTC/settings", "[Default]\nPATH=%s\n" % self.folder)
        self.write("DTC/DIAGRAM.DAT", "[PROPERTY]\n#DEFINE LIMIT 10\n[ADVANCED_SPEC]\n"
                   "#DEFINE LIMIT_SPEC 'Rows:|integer|1..500'\n#DEFINE BAD_SPEC 'Bad:|txet'\n[TEMPLATE]\n$(LIMIT)\n")
        _, talk = self.work("Custom", "--set LIMIT=600", status=1)
        self.assertIn('--apply: Rows takes a whole number from 1 to 500, not "600"\n', talk)
        self.assertIn('DIAGRAM.DAT:5:24: warning: there is no type "txet"', talk)
        _, talk = self.said("page", "a.html#Sales", "Custom", "--set", "LIMIT=600")
        self.assertTrue(talk.endswith("a.html#Sales Custom: nothing was written\n"), talk)
        self.assertEqual(self.get("LIMIT"), "10")
        self.work("Custom", "--set LIMIT=500")
        self.assertEqual(self.get("LIMIT"), "500")

    def test_only_apply_writes(self):
        before = self.text()
        output, talk = self.said("page", "a.html#Sales", "Styles", "--click", "chkHasBorder")
        self.assertIn("chkHasBorder     Border       on\n", output)
        self.assertEqual(talk, "a.html#Sales Styles: nothing was written; --apply would apply the page\n")
        _, talk = self.said("page", "a.html#Sales", "Styles", "--apply")
        self.assertEqual(talk, "a.html#Sales Styles: nothing to change\n")
        _, talk = self.said("page", "a.html#Sales", "Styles", "--click", "chkHasBorder", "--apply", "-n")
        self.assertEqual(talk, "a.html#Sales Styles: would be written\n")
        self.assertEqual(self.text(), before)

    def test_settings_are_kept_of_work_that_succeeds(self):
        set_default = ["page", "a.html#Sales", "Format", "--click", "cbCurrency", "--click", "cmdSetDefault"]
        settings = self.path("config/PlexorasDTC/settings")
        _, talk = self.said(*set_default, "-n")
        self.assertIn("a.html#Sales Format: settings would be written\n", talk)
        self.said(*set_default, "--click", "cmdNone", status=1)
        self.assertFalse(os.path.exists(settings))
        output, _ = self.said(*set_default, "--json")
        self.assertEqual(json.loads(output)["settings"], "written")
        self.assertIn("Format=Currency\n", self.text(settings))

    def test_what_is_stored_otherwise_than_typed_is_told_and_shown(self):
        cases = [
            ("Styles", ["txtSelectedRow=abc", "cmbFontSize=13", "txtSelectedCol=2.0"], "txtSelectedRow", "13",
             'txtSelectedRow: "abc" was stored as 13'),
            ("ChartStyles", ["txtAngle=steep"], "txtAngle", "0", 'txtAngle: "steep" was stored as 0'),
            ("Format", ["chkUseDefaultLocale=off", "cmbLanguage=German"], "cmbLanguage", "Ge",
             'cmbLanguage: "German" was stored as Ge'),
        ]
        for page, values, control, shown, warning in cases:
            with self.subTest(page=page):
                _, talk = self.work(page, "\n".join("--set " + value for value in values) + "\n-n -q")
                self.assertEqual(talk, "plexoras: warning: a.html#Sales %s: %s\n" % (page, warning))
                arguments = [word for value in values for word in ("--set", value)]
                found, controls = self.form(page, *arguments, "--apply")
                self.assertEqual([row["message"] for row in found["warnings"]], [warning])
                self.assertEqual(controls[control]["value"], shown)

    def test_json_of_a_failure_has_what_is_known(self):
        found, controls = self.form("Styles", "--click", "chkHasBorder", "--click", "cmdNone", status=1)
        self.assertEqual([row["action"] for row in found["problems"]], ["--click cmdNone"])
        self.assertEqual((found["page"], found["control"], found["property_page"]), ("a.html", "Sales", "Styles"))
        self.assertEqual(controls["chkHasBorder"]["value"], "on")
        found = json.loads(self.said("page", "a.html#Sales", "Nope", "--json", status=1)[0])
        self.assertEqual((found["control"], len(found["problems"])), ("Sales", 1))

    def test_a_terminal_obeys_nothing_that_is_shown(self):
        output, _ = self.said("page", "a.html#Sales", "Custom", "--set", "CAPTION=a\x1b[2J\x7f\u009bé")
        self.assertIn("a\\x1B[2J\\x7F\\xC2\\x9Bé\n", output)

    def test_lists_pages_and_controls(self):
        self.assertEqual([line.split()[0] for line in self.said("page", "a.html#Tip")[0].splitlines()],
                         ["PAGE", "Events", "Custom"])
        pages = json.loads(self.said("page", "a.html#Sales", "--json")[0])["property_pages"]
        for page in (row["name"] for row in pages):
            output, _ = self.said("page", "a.html#Sales", page)
            self.assertLessEqual(max(len(line) for line in output.splitlines()), 80, page)
        found, controls = self.form("Styles", "--set", "chkIsAbsolute=on")
        self.assertTrue(found["changed"])
        self.assertEqual((controls["yScaleMin"]["usable"], controls["cmbDiagramType"]["value"]), (True, "Bar"))
        self.assertEqual(len(controls["cmbDiagramType"]["choices"]), 12)


class Describe(AuthorTest):
    def test_properties_are_those_of_get_with_codes_and_captions(self):
        output, _ = self.said("describe", "chart", "--json")
        described = {row["name"]: row for row in json.loads(output)["properties"]}
        self.assertEqual(set(described), {line.split("=")[0] for line in self.said("get", "a.html#Sales")[0].splitlines()})
        self.assertEqual(described["CurveStyle"]["codes"][2], {"value": "2", "caption": "Fill"})
        self.assertEqual((described["FontSize"]["type"], described["FontSize"]["default"]), ("Integer", "12"))
        self.assertEqual(described["CAPTION"]["comment"], "The line that heads the chart.")
        self.assertEqual((described["ONSELECT"]["caption"], described["width"]["group"]), ("plexoras-select", "place"))
        places = {name: (row["property_page"], row["form_control"], row["caption"]) for name, row in described.items()}
        self.assertEqual(places["EqualCols"], ("TableStyles", "cbEqualCols", "Columns: Equal size"))
        self.assertEqual(places["negativeForeColor"], ("TableStyles", "chkRedNegativeValues", "Red negative values"))
        self.assertEqual(places["USEMENU"], ("Styles", "cmdMenuBuilder", "Menu"))
        self.assertEqual(places["Contents"][:2], ("Contents", "txtContents"))
        self.assertEqual([row["value"] for row in described["ExtendedSelection"]["codes"]], ["False", "True"])
        output, _ = self.said("describe", "template", "KIND")
        self.assertIn("default        note\n", output)
        self.assertIn("figure  Figure\n", output)

    def test_unknown_words_get_a_suggestion(self):
        self.assertIn('did you mean "chart"?', self.said("describe", "chrat", status=1)[1])
        self.assertIn('did you mean "FontSize"?', self.said("describe", "chart", "Fontsise", status=1)[1])
        self.assertIn("several properties: EqualCols (Columns: Equal size), EqualRows (Rows: Equal size)\n",
                      self.said("describe", "chart", "equal size", status=1)[1])
        self.assertEqual([line.split()[0] for line in self.said("describe")[0].splitlines()],
                         ["CONTROL", "chart", "template"])


class Image(AuthorTest):
    def test_without_a_picture_the_file_stays(self):
        self.write("data/x.png", "old")
        for control, what in (("Sales", "name the file data/x.svg"), ("Tip", "shows no chart")):
            _, talk = self.said("image", "a.html#" + control, "-o", "data/x.png", status=1)
            self.assertIn(what, talk)
        self.assertEqual(self.text("data/x.png"), "old")
        self.assertEqual(os.listdir(self.path("data")), ["x.png"])


if __name__ == "__main__":
    main()
