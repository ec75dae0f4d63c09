"""Runs `plexoras check` and `plexoras expand --step` as their users do.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import json

from tool_case import ToolTest, main


class Check(ToolTest):
    def test_tells_findings_on_standard_output_and_their_count_on_standard_error(self):
        self.write("site/page.html", '<p>\n<!--dtc Other.Control name="A"-->\n<!--/dtc-->\n')
        self.write("site/NOTICE.DAT", "[TEMPLATE]\n#IFDEF WIDTH\n$(Width)\n")
        self.write("site/OTHER.DAT", "bytes of another program\n")
        self.write("site/.git/HIDDEN.DAT", "[A]\n#ENDIF\n")
        output, talk = self.said("check", "site", status=1)
        self.assertEqual([line for line in output.splitlines() if line.startswith("site")], [
            "site/NOTICE.DAT:2:1: error: this #IFDEF is never closed [unclosed-conditional]",
            'site/NOTICE.DAT:3:1: warning: nothing defines the variable "Width" [undefined-variable]',
            'site/page.html:2:1: error: control "A": there is no control "Other.Control" here; known: '
            "chart (PlexorasDTC.DiagramDTC), template (PlexorasDTC.TemplateDTC) [unknown-control]",
        ])
        self.assertEqual(talk, "2 errors and 1 warning in 2 files\n")

    def test_exit_status(self):
        self.write("CLEAN.DAT", "[A]\nx\n")
        self.write("WARNED.DAT", "[A]\n$(X\n")
        self.assertEqual(self.said("check", "CLEAN.DAT"), ("", "0 errors and 0 warnings in 1 file\n"))
        self.said("check", "WARNED.DAT")
        self.said("check", "--werror", "WARNED.DAT", status=1)
        self.said("check", "NONE.DAT", "none.html", status=1)
        self.said("check", status=2)
        _, talk = self.said("check", "--explain", "stray-endfi", status=2)
        self.assertIn('did you mean "stray-endif"?', talk)

    def test_json_has_one_object_a_finding(self):
        self.write("T.DAT", "[A]\n#ENDIF\n$(X\n")
        output, talk = self.said("check", "T.DAT", "--json", status=1)
        first, second = (json.loads(line) for line in output.splitlines())
        self.assertEqual((first["version"], first["file"], first["line"], first["column"]), (1, "T.DAT", 2, 1))
        self.assertEqual((first["rule"], first["severity"]), ("stray-endif", "error"))
        self.assertEqual((second["rule"], second["severity"]), ("unclosed-reference", "warning"))
        self.assertTrue(second["message"] and second["mend"])
        self.assertEqual(talk, "")

    def test_lists_and_explains_every_rule(self):
        output, _ = self.said("check", "--rules")
        names = [line.split()[0] for line in output.splitlines()]
        objects = [json.loads(line) for line in self.said("check", "--rules", "--json")[0].splitlines()]
        self.assertEqual(names, [row["rule"] for row in objects])
        for name in names:
            self.assertTrue(self.said("check", "--explain", name)[0].startswith(name + " ("))


class Step(ToolTest):
    SECTION = "[A]\nbefore\n#DEFINE X 1\n#HALT\n#DEFINE X 2\n  text $(X)\n#HALT\nlast\n"
    RESULT = "before\r\n  text 2\r\nlast\r\n"

    def setUp(self):
        super().setUp()
        self.write("S.DAT", self.SECTION)

    def step(self, typed, *options, status=0):
        """The result, and the lines at which it stopped."""
        output, talk = self.said("expand", "S.DAT", "A", *options, typed=typed, status=status)
        return output, [line for line in talk.splitlines() if line.startswith("S.DAT:")], talk

    def test_stops_as_it_is_told(self):
        halt, text, again, last = "S.DAT:4: #HALT", "S.DAT:6:   text $(X)", "S.DAT:7: #HALT", "S.DAT:8: last"
        for typed, stops in (
            ("", [halt]),
            ("c\n", [halt]),
            ("h\n", [halt, again]),
            ("h\nh\n", [halt, again]),
            ("\n\n\n\n", [halt, text, again, last]),
            ("n\r\nnext\ncontinue\n", [halt, text, again]),
        ):
            self.assertEqual(self.step(typed, "--step")[:2], (self.RESULT, stops), typed)
        self.assertEqual(self.step("\n", "--step-first")[:2], (self.RESULT, ["S.DAT:2: before", halt]))
        self.assertEqual(self.step("", "-v")[:2], (self.RESULT, []))
        self.assertEqual(self.step("q\n", "--step", status=130)[:2], ("", [halt]))

    def test_shows_output_and_variables_and_tries_out_what_is_typed(self):
        _, _, talk = self.step("\no\np X\np Y\n= c\n<$(X)>\n#DEFINE X 9\n#%INC z\nv\n", "--step")
        self.assertEqual(talk, """--- output ---
before
--- variables ---
  X = 1
S.DAT:4: #HALT
(step) 
--- output ---
before
--- variables ---
* X = 2
S.DAT:6:   text $(X)
(step) o
before
(step) p X
2
(step) p Y
there is no variable "Y"; v lists those there are
(step) = c
c
(step) <$(X)>
<2>
(step) #DEFINE X 9
(step) #%INC z
<text>:1:1: error: %INC needs a whole number, not "z" (error 13)
  #%INC z
  ^
(step) v
* X = 2
(step) 
""")

    def test_tries_out_with_the_file_of_the_halted_section(self):
        self.write("S.DAT", "[A]\n#DEFINE X 1\n#INCLUDE P FROM P.DAT\n[OWN]\nown $(X)\n")
        self.write("P.DAT", "[P]\n#UNDEF X\n#HALT\n#DEFINE Y 1\ntext\n")
        _, _, talk = self.step("#INCLUDE OWN\n\nv\n", "--step")
        self.assertIn("(step) #INCLUDE OWN\nown \n", talk)
        self.assertTrue(talk.endswith("P.DAT:5: text\n(step) v\n* Y = 1\n(step) \n"), talk)

    def test_shortens_what_is_long(self):
        self.write("S.DAT", "[A]\n" + "".join("line %d\n" % i for i in range(9)) + "#HALT\n")
        _, _, talk = self.step("", "--step", "-D", "LONG=" + "\u00e4" * 60)
        self.assertEqual(talk, "--- end of the output ---\n" + "".join("line %d\n" % i for i in range(4, 9)) +
                         "--- variables ---\n  LONG = " + "\u00e4" * 36 + "... (120 bytes)\nS.DAT:11: #HALT\n(step) \n")


if __name__ == "__main__":
    main()
