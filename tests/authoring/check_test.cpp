#include <gtest/gtest.h>

#include "authoring/snapshot.h"
#include "checked_files.h"

namespace plexoras {
namespace {

TEST(Check, TellsWhatIsWrongWhereAndHowToMendIt) {
  CheckedFiles files;
  std::string text;
  for (const Finding& finding : files.check_template("[TEMPLATE]\n\t#IFDEFF WIDTH\n; why\nab\\\n  $(Width)\n")) {
    text += to_text(finding);
  }
  EXPECT_EQ(text,
            "T.DAT:2:2: error: \"#IFDEFF\" is no directive [misspelled-directive]\n"
            "  \t#IFDEFF WIDTH\n"
            "  \t^\n"
            "  write #IFDEF\n"
            "T.DAT:5:3: warning: nothing defines the variable \"Width\" [undefined-variable]\n"
            "    $(Width)\n"
            "    ^\n"
            "  did you mean \"WIDTH\"? Case counts\n");
}

TEST(Check, FindsFaultsInTemplates) {
  struct Case {
    const char* name;
    std::string_view text, expected;
  };
  const Case cases[] = {
      {"conditions in order", "[A]\n#IFDEF X\n#IFEQUAL Y 1\n#ELSE\n#ENDIF\n#ENDIF\n", ""},
      {"never closed, at the line that opens it", "[A]\n#IFDEF X\n#IFDEF Y\n#ENDIF\n[B]\n#ENDIFS\n",
       "2:1 unclosed-conditional|6:1 misspelled-directive|6:1 stray-endif|"},
      {"opened in one section and closed in another", "[A]\n#INCLUDE B\nx\n#INCLUDE C\n[B]\n#IFDEF X\n[C]\n#ENDIF\n",
       ""},
      {"closed twice", "[A]\n#IFDEF X\n#ENDIF\n  #ENDIF\n", "4:3 stray-endif|"},
      {"two alternatives, and no fault of what goes on elsewhere",
       "[A]\n#INCLUDE B\n#ELSE\n#ELSE\n#INCLUDE C\n[B]\n#IFDEF X\n[C]\n#ENDIF\n", "4:1 second-else|"},
      {"an alternative to nothing", "[A]\na\n#ELSE\nb\n", "3:1 stray-else|"},
      {"an else-if", "[A]\n#IFDEF X\n#ELSEIF Y\n#ENDIF\n", "3:1 misspelled-directive|"},
      {"conditions that macros make", "[A]\n#MACRO WHEN #IFDEF $(_NAME)\n#WHEN X\n#ENDIF\n", ""},
      {"directives without what belongs to them",
       "[A]\n#DEFINE X\n#MACRO Y\n#IFEQUAL X\n#ENDIF\n#IFDEF\n#UNDEF \n#DEFINE Z '\n",
       "2:1 incomplete-directive|3:1 incomplete-directive|4:1 incomplete-directive|6:1 misspelled-directive|"
       "7:1 incomplete-directive|8:1 incomplete-directive|"},
      {"parts that references bring", "[A]\n#DEFINE P A b\n#DEFINE $(P)\n#IFEQUAL $(P)\n#ENDIF\n", ""},
      {"words of other languages", "[A]\n#if X\n#elif Y\n#include B\n#IFNDEF X\n#endif\n",
       "2:1 misspelled-directive|3:1 misspelled-directive|4:1 misspelled-directive|5:1 misspelled-directive|"
       "6:1 misspelled-directive|"},
      {"a macro that is called like one", "[A]\n#MACRO IF x\n#IF X\n", ""},
      {"calls of nothing", "[TEMPLATE]\n#main { }\n#(HTML WIDTH)\n<p>#(NONE)#(%TODAY)</p>\n",
       "2:1 undefined-macro|3:1 undefined-macro|4:4 undefined-macro|"},
      {"names of nobody where no control reads", "[A]\n#NAME\na#(OTHER X)$(THIRD)\n#IFDEF FOURTH\n#ENDIF\n", ""},
      {"names that are nearly others", "[A]\n#DEFINE TITLE x\n$(Title) $(TITEL) $(TITLE2) $(T)\n",
       "3:1 undefined-variable|3:10 undefined-variable|"},
      {"names of properties",
       "[TEMPLATE]\n<p>#(%LENGTH KIND)</p>$(\\KNID)\n#IFDEF OTHER\n$(\\OTHER)\n#ENDIF\n#IFEQUAL Kind x\n#ENDIF\n"
       "[PROPERTY]\n#DEFINE KIND x\n",
       "2:23 undefined-variable|6:10 undefined-variable|"},
      {"the argument of a macro that reads it",
       "[TEMPLATE]\n#MACRO V <b>$(\\_VALUE)</b>\n#MACRO N <b>$(_NAME)</b>\n#MACRO ?M $(\\_VALUE)\n"
       "<p>#(V Nothing)#(N Nothing)#(?M Nothing)</p>\n",
       "5:4 undefined-variable|"},
      {"names built from references",
       "[TEMPLATE]\n#DEFINE N 2\n#DEFINE TEXT$(N) x\n#DEFINE WORD2 y\n$(TEXT2)$(WORD$(N))$($(N))\n", ""},
      {"nothing is used",
       "[TEMPLATE]\n#DEFINE A 1\n#MACRO M x\n#DEFINE A 2\n#INCLUDE PART\n#DEFINE WIDTH 3\n[PART]\n#DEFINE B 1\n",
       "2:1 unused-variable|3:1 unused-macro|8:1 unused-variable|"},
      {"used in any way",
       "[TEMPLATE]\n#DEFINE A 1\n#DEFINE B 2\n#DEFINE C 3\n#MACRO M $(A)\n#IFEQUAL B 2\n#M x\n#ENDIF\n"
       "$([S])\n[S]\n#DEFINE S $(C)\n",
       ""},
      {"what may come from anywhere", "[TEMPLATE]\n#DEFINE A 1\n#INCLUDE $(KIND)\n$(B)\n[PROPERTY]\n#DEFINE KIND X\n",
       ""},
      {"macros made of themselves",
       "[A]\n#MACRO L a$(L)\n#MACRO M #(N)\n#MACRO N #M x\n#MACRO O #(?O X)\n#MACRO P \\$(P)\n",
       "2:11 runaway-reference|4:10 runaway-reference|"},
      {"variables made of themselves",
       "[A]\n#DEFINE A '\\$(A)y'\n#DEFINE B '\\$(C)'\n#DEFINE C '\\$(B)'\n#DEFINE V '\\#(M x)'\n#MACRO M $(V)\n",
       "2:13 runaway-reference|4:13 runaway-reference|6:10 runaway-reference|"},
      {"what settles all the same",
       "[A]\n#DEFINE A '\\$(A)'\n#MACRO E $(\\E)\n#MACRO R $(\\R,$,x)\n#DEFINE N '#(%LENGTH \\$(N))'\n", ""},
      {"macros that are never there together",
       "[A]\n#IFDEF X\n#MACRO AA a#(BB x)\n#ELSE\n#MACRO BB b#(AA x)\n#ENDIF\n#MACRO CC #(DD x)\n#UNDEF CC\n"
       "#MACRO DD #(CC x)\n#IFDEF X\n#MACRO EE #(FF x)\n#MACRO FF #(EE x)\n#ENDIF\n",
       "12:11 runaway-reference|"},
      {"a value that grows", "[A]\n#DEFINE L x\n#DEFINE L $(L)y\n", ""},
      {"references that cannot be read",
       "[A]\n$(\\A,b) $(\\A,b,) $([) #(%INC x) #(%INC $(x)) #(%DEC 2147483648)\n a $(B c\n",
       "2:1 bad-reference|2:18 bad-reference|2:23 bad-reference|2:46 bad-reference|3:4 unclosed-reference|"},
      {"text that authors type, whatever the form takes",
       "[PROPERTY]\n#DEFINE T x\n#DEFINE U x\n#DEFINE N 1\n[ADVANCED_SPEC]\n#DEFINE N_SPEC 'N:|integer|1..9'\n"
       "[TEMPLATE]\n#MACRO B <b>$(_VALUE)</b>\n#DEFINE C $(T)\n#DEFINE T2 '#(%LENGTH $(T))'\n#DEFINE U '$(\\U)'\n"
       "<p $(?WIDTH)>$(T)$(\\T,a,b)$(\\T)$(XmlStyle)$(Contents)$(N)\n<p>$(C)$(T2)$(U)#(B T)#(B XmlStyle)\n"
       "#IFINSIDE T (a,b)\n$(T)\n#ELSE\n$(T)\n#ENDIF\n",
       "12:4 unescaped-text|12:14 unescaped-text|12:18 unescaped-text|12:54 unescaped-text|13:4 unescaped-text|"
       "13:17 unescaped-text|17:1 unescaped-text|"},
      {"text that authors type, through macros and sections",
       "[PROPERTY]\n#DEFINE A x\n[TEMPLATE]\n#INCLUDE HTML FROM APPLET.DAT\n#MACRO SHOW <b>$(_VALUE)</b>\n"
       "#MACRO WRAP <i>#(SHOW _VALUE)</i>\n#MACRO NAMED #(SHOW $(_NAME))$($(_NAME))\n#MACRO SAFE #(HTML _VALUE)\n"
       "#MACRO OWN $(\\_VALUE,<,&lt;)\n#MACRO ASKS $([SHOWN])\n#MACRO NAME $(_NAME)\n#MACRO LOOP x#(LOOP _VALUE)\n"
       "<p>#(WRAP A)#(NAMED A)#(SAFE A)#(OWN A)#(ASKS A)\n<p>#(NAME $(A))#(NAME A)#(LOOP A)#(SAFE $(A))\n"
       "<p>$([GIVES])$([KEEPS])$(\\[GIVES])#(SAFE [GIVES])\n#DEFINE C '#(WRAP A)'\n#DEFINE D $([KEEPS])\n$(C)$(D)\n"
       "#IFEQUAL A x\n$([GIVES])#(WRAP A)\n#ENDIF\n#IFDEF NONE\n#MACRO SAFE $(_VALUE)\n#ENDIF\n<p>#(SAFE A)\n"
       "[SHOWN]\n#DEFINE SHOWN $(_VALUE)\n[GIVES]\n#DEFINE _X '$(A)'\n#DEFINE GIVES #(SHOW _X)\n"
       "[KEEPS]\n#IFDEF A\n#DEFINE KEEPS #(HTML A)\n#ELSE\n#DEFINE KEEPS none\n#ENDIF\n",
       "12:14 runaway-reference|13:4 unescaped-text|13:13 unescaped-text|13:32 unescaped-text|13:40 unescaped-text|"
       "14:4 unescaped-text|15:4 unescaped-text|18:1 unescaped-text|25:4 unescaped-text|"},
      {"scripts that authors write",
       "[PROPERTY]\n#DEFINE A x\n[TEMPLATE]\n#INCLUDE SCRIPT FROM APPLET.DAT\n#DEFINE _ON '<SCRIPT defer>\\\nf('\n"
       "#MACRO RUN <script>#(SCRIPT _VALUE)</script>\n#MACRO PART #(SCRIPT _VALUE)\n"
       "<p>#(SCRIPT A)</p><script>#(SCRIPT A)</script >#(PART A)\n<scripted>#(RUN A)#(SCRIPT A)\n"
       "$(_ON)\nx#(PART A)\n$(_LINE)#(SCRIPT A)\n#INCLUDE END\nx#(SCRIPT A)\n$(_ON)\nx#(SCRIPT A)\n#INCLUDE END\n"
       "x#(SCRIPT A)\n#IFDEF A\n<script>\n#ENDIF\nx#(SCRIPT A)\n#IFDEF A\n</script>\n#ENDIF\n"
       "[END]\n</script>\n",
       "9:4 unescaped-text|9:48 unescaped-text|10:19 unescaped-text|15:2 unescaped-text|19:2 unescaped-text|"},
      {"text that authors type, in some branch",
       "[PROPERTY]\n#DEFINE K x\n#DEFINE T x\n#DEFINE U x\n[TEMPLATE]\n"
       "#IFEQUAL K a\n#DEFINE T fixed\n#DEFINE U fixed\n#DEFINE C $(U)\n$(T)\n#ELSE\n#DEFINE U '$(\\U)'\n"
       "#DEFINE C $(T)\n#ENDIF\n$(T)\n$(U)\n$(C)\n#DEFINE T fixed\n$(T)\n"
       "#IFEQUAL K a\n#DEFINE T $(K)\n#ENDIF\n$(T)\n#UNDEF C\n$(C)\n",
       "15:1 unescaped-text|17:1 unescaped-text|"},
      {"definitions that store nothing",
       "[PROPERTY]\n#DEFINE A ''\n#DEFINE B x\n#DEFINE B ''\n[TEMPLATE]\n#DEFINE _C ''\n"
       "$(_C)\n",
       "2:1 empty-definition|"},
      {"blanks in names",
       "[CONSTANT]\n#DEFINE T_Heat table 11\n#DEFINE T_Bar 2\n#DEFINE NOTE 'since 11'\n#DEFINE \"a b\" 1\n[MENUITEMS]\n"
       "#DEFINE Copy data java:copy\n#DEFINE Run script:go(1, 2)\n",
       "2:1 blank-in-name|5:9 blank-in-name|7:1 blank-in-name|"},
      {"forms, in all branches",
       "[PROPERTY]\n#DEFINE A x\n#DEFINE B x\n[ADVANCED_SPEC]\n#IFEQUAL A x\n#DEFINE A_SPEC 'A|txet'\n#ELSE\n"
       "#DEFINE A_SPEC A|text|DISABELD\n#ENDIF\n#DEFINE B_SPEC ''\n#DEFINE _X_SPEC x\n#DEFINE C_COMMENT x\n"
       "#DEFINE M_MESSAGESPEC 'm|when D=1'\n#DEFINE N_MSGSPEC m\n  A_SPEC 'A|text'\n#DEFINE L_DIVIDERSPEC\n"
       "#DEFINE D_COMMENT x\n#DEFINE D_SPEC 'D|text'\n[TEMPLATE]\n<hr>\n",
       "6:19 unreadable-form|8:23 unreadable-form|10:17 unreadable-form|12:19 unreadable-form|14:19 unreadable-form|"
       "15:3 unreadable-form|16:1 incomplete-directive|18:1 undeclared-setting|"},
      {"forms whose values are built from others",
       "[PROPERTY]\n#DEFINE A x\n[ADVANCED_SPEC]\n#DEFINE _NUMBER 'integr|1..9'\n#DEFINE _RIGHT 'integer|1..9'\n"
       "#DEFINE A_SPEC 'A|$(_NUMBER)'\n#DEFINE B_SPEC 'A|$(_RIGHT)'\n#DEFINE C_SPEC '$(A)'\n"
       "#DEFINE D_SPEC '#(%LENGTH $(A))|text'\n",
       "6:19 unreadable-form|"},
      {"forms with tables",
       "[ADVANCED_SPEC]\n#DEFINE A_SPEC 'A|lookup|PIE'\n#DEFINE B_SPEC 'B|lookup|PIES'\n"
       "[CONSTANT]\n#DEFINE PIE_Flat 0\n",
       "3:26 unreadable-form|"},
      {"forms with tables that are built from references",
       "[ADVANCED_SPEC]\n#DEFINE A_SPEC 'A|lookup|PIE'\n#DEFINE B_SPEC 'B|lookup|CAKE'\n"
       "[CONSTANT]\n#DEFINE _T CAKE\n#DEFINE $(_T)_Flat 0\n#DEFINE PIE_Flat$(_T) 0\n",
       ""},
      {"forms for contents",
       "[PROPERTY]\n#DEFINE A x\n[DSPROGID]\n#IFEQUAL A x\n#DEFINE DSPROGID [DATA]\n#ELSE\n#DEFINE DSPROGID [DTAA]\n"
       "#ENDIF\n#DEFINE DSPROGID '[DATA]:NONE.DAT'\n#DEFINE DSPROGID [$(A)]\n#DEFINE DSPROGID Some.Editor\n"
       "[DATA]\n#DEFINE A_SPEC 'A|txet'\n#DEFINE B_SPEC 'B|lookup|PIE'\n[CONSTANT]\n#DEFINE PIE_Flat 0\n"
       "[TEMPLATE]\n<hr>\n",
       "7:18 missing-section|9:19 missing-file|13:19 unreadable-form|14:1 undeclared-setting|"},
      {"events with one script",
       "[CONSTANT]\n#DEFINE EVENTHANDLER_a ONA\n#DEFINE EVENTHANDLER_b ONB\n#DEFINE EVENTHANDLER_c ONA\n"
       "#DEFINE EVENTHANDLER_b ONC\n#DEFINE EVENTHANDLER_d ONB\n#IFDEF X\n#DEFINE EVENTHANDLER_e ONA\n#ENDIF\n"
       "#DEFINE EVENTDETAIL_c ONA\n",
       "4:24 shared-script|"},
      {"sections and files",
       "[A]\n#INCLUDE B\n  #INCLUDE b\n#INCLUDE X FROM NONE.DAT\n$([NO]) $([NONE.DAT FROM A]) $([B])\n"
       "#IFDEF [NO]\n#ENDIF\n[B]\n",
       "3:12 missing-section|4:17 missing-file|5:1 missing-section|5:9 missing-file|5:30 undefined-variable|"},
      {"sections without end", "[A]\n#INCLUDE B\n[B]\n#INCLUDE C\n[C]\nx\n#INCLUDE B\n", "7:1 include-cycle|"},
      {"sections that may end",
       "[A]\n#DEFINE N 9\n#INCLUDE B\n[B]\n#DEFINE N #(%DEC $(N))\n#IFNEQUAL N 0\n#INCLUDE B\n#ENDIF\n", ""},
      {"a section that needs itself", "[A]\n#DEFINE A $([A])\n", "2:11 include-cycle|"},
      {"headers that are none", "stray\nmore\n[A]\n[B] \n  [C]\n[d] e\n",
       "1:1 text-outside-section|4:1 not-a-section|"
       "5:3 not-a-section|"},
      {"silenced on a line",
       "[A]\n; check: allow stray-endif\n#ENDIF\n; why: see there\n; check: allow stray-else, stray-endif\n; "
       "so\n#ENDIF\n"
       "; check: allow stray-else\n#ENDIF\n",
       "9:1 stray-endif|"},
      {"silenced by rules that there are none of",
       "[A]\n; check: allow stray-endfi, stray-else why - so, x\n; check: allow stray-endif for now no-rule\n#ENDIF\n"
       "; a sentence about check: allowing\n",
       "2:16 unknown-rule|2:50 unknown-rule|3:36 unknown-rule|"},
  };
  for (const Case& c : cases) {
    CheckedFiles files;
    files.host.files["APPLET.DAT"] = source_file("share/DTC/APPLET.DAT");
    EXPECT_EQ(places(files.check_template(c.text)), c.expected) << c.name;
  }
}

TEST(Check, CountsWhatIsSurelyThere) {
  const auto defined = [](std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += "#DEFINE V" + std::to_string(i) + " 1\n";
    return text;
  };
  CheckedFiles files;
  EXPECT_EQ(places(files.check_template("[CONSTANT]\n" + defined(124))), "");
  EXPECT_EQ(places(files.check_template("[CONSTANT]\n" + defined(129))), "126:1 dictionary-nearly-full|");
  EXPECT_EQ(places(files.check_template("[CONSTANT]\n" + defined(130))), "131:1 dictionary-overflow|");
  const std::string branches = "#IFDEF X\n" + defined(100) + "#ELSE\n" + repeated("#DEFINE A 1\n", 100) + "#ENDIF\n";
  EXPECT_EQ(places(files.check_template("[CONSTANT]\n" + branches + "#DEFINE B 1\n")), "");
  // The properties and what the control sets are there when the text is made.
  EXPECT_EQ(places(files.check_template("[PROPERTY]\n" + defined(126) + "[TEMPLATE]\n#DEFINE X 1\n$(X)\n")),
            "126:1 dictionary-nearly-full|129:1 dictionary-overflow|");
  EXPECT_EQ(places(files.check_template("[PROPERTY]\n" + defined(127) + "[TEMPLATE]\n<hr>\n")),
            "126:1 dictionary-nearly-full|130:1 dictionary-overflow|");
  // A chart's style is there, too.
  const std::string full = "[PROPERTY]\n" + defined(126) + "[TEMPLATE]\n<hr>\n";
  EXPECT_EQ(places(files.check_template(full)), "126:1 dictionary-nearly-full|129:1 dictionary-nearly-full|");
  files.host.files["DIAGRAM.DAT"] = full;
  EXPECT_EQ(places(files.check({"DIAGRAM.DAT"})), "126:1 dictionary-nearly-full|129:1 dictionary-overflow|");
  const std::string deep = repeated("#IFDEF X\n", 129) + repeated("#ENDIF\n", 129);
  EXPECT_EQ(places(files.check_template("[A]\n" + deep)), "130:1 conditionals-too-deep|");
}

TEST(Check, TellsErrorsAloneOfFilesThatWereNotNamed) {
  CheckedFiles files;
  files.host.files["site/T.DAT"] = "[TEMPLATE]\n#INCLUDE PART FROM PARTS.DAT\n";
  files.host.files["site/PARTS.DAT"] = "[PART]\n$(Nothing)\n#IFDEF X\n";
  files.host.files["PARTS.DAT"] = "[PART]\n";  // the one beside it counts
  EXPECT_EQ(places(files.check({"site/T.DAT"})), "3:1 unclosed-conditional|");
  EXPECT_EQ(places(files.check({"site/T.DAT", "site/PARTS.DAT"})), "2:1 undefined-variable|3:1 unclosed-conditional|");
  EXPECT_EQ(places(files.check({"NONE.DAT"})), "0:0 missing-file|");
}

TEST(Check, FindsFaultsInPages) {
  const auto chart = [](std::string_view name, std::string_view state) {
    return "<!--dtc PlexorasDTC.DiagramDTC name=\"" + std::string(name) + "\"\n" + std::string(state) +
           "-->\n<!--/dtc-->\n";
  };
  struct Case {
    const char* name;
    std::string page, expected;
  };
  const Case cases[] = {
      {"a page without controls", "<p>[x]</p>\n", ""},
      {"a chart", chart("A", "XmlStyle=\"&lt;xml&gt;&lt;DiagramType&gt;1&lt;/&gt;&lt;/&gt;\"\n"), ""},
      {"marks that cannot be read", "<p>\n<!--dtc X name=\"A\"\n", "2:1 unreadable-page|"},
      {"names", chart("A", "") + chart("B", "") + chart("A", ""), "7:1 duplicate-name|"},
      {"a type of somebody else", "<!--dtc Other.Control name=\"A\"-->\n<!--/dtc-->\n", "1:1 unknown-control|"},
      {"the same, meant so", "<!-- check: allow unknown-control-->\n<!--dtc Other.Control name=\"A\"-->\n<!--/dtc-->\n",
       ""},
      {"meant so by a name that is none", "<p>\n <!-- check: allow unknown-controll, duplicate-name -->\n",
       "2:20 unknown-rule|"},
      {"documents that are refused",
       chart("A",
             "Contents=\"&lt;xml&gt;\"\nMENU=\"&lt;xml&gt;&lt;/&gt;&lt;/&gt;&lt;/"
             "&gt;&lt;A&gt;&lt;B&gt;&lt;C&gt;&lt;D&gt;x&lt;/"
             "&gt;\"\n"
             "XmlStyle=\"&lt;FontSize&gt;big\"\n"),
       "2:1 refused-contents|3:1 refused-menu|4:1 refused-style|"},
      {"a state that does not load", chart("A", "ColSelection=\"first\"\n"), "1:1 unloadable-control|"},
      {"a chart in a paragraph", "<P id=x><b>\n" + chart("A", ""), "2:1 chart-in-paragraph|"},
      {"a chart behind a script in a paragraph", "<p><script>'</p>'</script></b><my-p></my-p>\n" + chart("A", ""),
       "2:1 chart-in-paragraph|"},
      {"charts behind paragraphs",
       "<p>x</p >" + chart("A", "") + "<p>x<div>" + chart("B", "") + "<p>x</div>" + chart("C", "") + "<pre><param>" +
           chart("D", ""),
       ""},
      {"another control in a paragraph", "<p><!--dtc PlexorasDTC.TemplateDTC name=\"A\"-->\n<!--/dtc-->", ""},
  };
  for (const Case& c : cases) {
    CheckedFiles files;
    files.host.files["page.html"] = c.page;
    EXPECT_EQ(places(files.check({"page.html"})), c.expected) << c.name;
  }
  EXPECT_EQ(places(CheckedFiles().check({"none.html"})), "0:0 unreadable-page|");
}

TEST(Check, TellsWhenAPictureAndItsChartHaveParted) {
  Author author;
  LiveControl control = author.make("A");
  const std::string stamp = picture_of(control, "")->stamp;
  struct Case {
    const char* name;
    std::string text;
    bool changed;
    std::string_view found;
  };
  const Case cases[] = {
      {"a picture", snapshot_element("<svg></svg>", stamp), false, ""},
      {"a picture of other data", snapshot_element("<svg></svg>", "0000000000000000"), false, "0:18 stale-picture|"},
      {"no picture", "<table></table>", true, ""},
      {"a picture of before", snapshot_element("<svg></svg>", stamp), true, "0:18 stale-picture|"},
  };
  for (const Case& c : cases) {
    CheckedFiles files;
    files.host.files["DIAGRAM.DAT"] = Author::default_template;
    ControlProperties(control).set("FontSize", c.changed ? "13" : "12");
    files.host.files["page.html"] = page_of(control.record(), c.text);
    std::vector<Finding> found = files.check({"page.html"});
    for (Finding& finding : found) finding.line = 0;
    EXPECT_EQ(places(found), c.found) << c.name;
  }
}

TEST(Check, ExplainsEveryRuleInTheDocuments) { EXPECT_EQ(check_rules_document(), source_file("docs/check-rules.md")); }

// What the examples of the rules show is what the rules find, and nothing else once it is mended.
TEST(Check, HasExamplesThatAreTrue) {
  for (const CheckRule& rule : check_rules()) {
    const auto found = [&](std::string_view example) {
      const bool has_header = example.find('[') == 0 || example.find("\n[") != std::string_view::npos;
      return places(CheckedFiles().check_template((has_header ? "" : "[A]\n") + std::string(example)));
    };
    const bool is_page_text = rule.name == "unescaped-text";
    const std::string before = is_page_text ? "[PROPERTY]\n#DEFINE CAPTION x\n[TEMPLATE]\n#MACRO HTML x\n" : "";
    if (!rule.wrong.empty()) {
      EXPECT_NE(found(before + std::string(rule.wrong)).find(rule.name), std::string::npos) << rule.name;
    }
    if (!rule.right.empty()) {
      EXPECT_EQ(found(before + std::string(rule.right)).find(rule.name), std::string::npos) << rule.name;
    }
  }
}

}  // namespace
}  // namespace plexoras
