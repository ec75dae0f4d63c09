"""What authors may type into a property reaches the reader as it is.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import csv
import html
import io
import re
from html.parser import HTMLParser

from tool_case import CLOSING, OPENING, ToolTest, listed, main, unlisted


class PublishedPage(HTMLParser):
    """The elements of a page and the parameters of its chart, as a browser reads them."""

    def __init__(self, page):
        super().__init__(convert_charrefs=True)
        self.elements, self.parameters, self.attributes = [], {}, {}
        self.feed(page.decode("latin-1"))
        self.close()

    def handle_starttag(self, tag, attrs):
        if tag == "param":
            self.parameters[dict(attrs)["name"]] = dict(attrs)["value"]
        else:
            self.elements.append(tag)
            self.attributes[tag] = dict(attrs)

    def handle_endtag(self, tag):
        self.elements.append("/" + tag)

    def handle_comment(self, data):
        self.elements.append("comment")


def unescaped(text):
    """A text of a style or contents document."""
    for entity, character in (("lt", "<"), ("gt", ">"), ("quot", '"'), ("apos", "'"), ("tab", "\t"), ("amp", "&")):
        text = text.replace(f"&{entity};", character)
    return text


class HostileValues(ToolTest):
    """What an author types reaches the reader as it is, and the page keeps its shape."""

    VALUES = [
        b"plain", b'"', b"'", b'"quoted"', b"''", b" blanks ", b"-->", b"--", b"---", b"-", b"--!>", b"<!--", b"<",
        b"</script", b"</plexoras-diagram>", b"<!--/dtc-->", b'<!--dtc PlexorasDTC.DiagramDTC name="A"\n-->',
        b"\0", bytes(range(1, 32)), bytes(range(127, 256)), b"\xff\xfe", b"\xc3(", b"\xed\xa0\x80", b"\xe2\x82\xac",
        b"$(X)", b"#(X)", b"$(CAPTION)", b"#(HTML ALT)", b"$([TEMPLATE])", b"$(\\CAPTION,a,b)", b"#(%TODAY)", b"$($(X)",
        b"\\$(", b"\\$(X)", b"\\#(", b"\\", b"a\\", b"a\\\n", b"$", b"$(", b"(", b")", b"#", b"#HALT", b"#INCLUDE X",
        b"a\n#DEFINE CAPTION b\nc", b"[TEMPLATE]", b"; x", b"$('#total').text(\"x\")", b"_VALUE", b"$(_VALUE)",
        b"$(ESCAPED)", b"$(_OPEN)X)", b"&", b"&amp;", b"&#36;(", b"&quot;", b"%41", b",", b"a=b", b"\t", b"\r\n\r\n",
        b"a\rb",
    ]
    PLAIN = ["CAPTION", "ALT", "MENU", "HASMENU"]  # custom properties, escaped by the template
    STYLE = ["FontName", "negativeForeColor"]

    def test_in_every_kind_of_property(self):
        def as_html(text):  # HTML itself reads CR LF and CR as LF
            return text.replace("\r\n", "\n").replace("\r", "\n")

        shape = None
        for value in self.VALUES:
            text = value.decode("latin-1")
            field = b'"' + value.replace(b'"', b'""') + b'"'
            settings = {name.encode(): value for name in self.PLAIN + self.STYLE + ["WIDTH"]}
            settings.update({b"USEMENU": b"Yes", b"CsvContents": b"c,%s\r\n%s,%s\r\n" % (field, field, field)})
            self.write("p.html", b"<body>" + OPENING % b"A" + CLOSING + b"</body>")
            lines = b"".join(name + b"=" + listed(each) + b"\n" for name, each in settings.items())
            self.done("set", "p.html", "--from", "-", stdin=lines)
            self.done("publish", "p.html")
            got = self.done("get", "p.html", "CAPTION", "FontName", "CsvContents").split(b"\n")
            self.assertEqual(got[:2], [b"CAPTION=" + listed(value), b"FontName=" + listed(value)])
            sheet = unlisted(got[2].split(b"=", 1)[1]).decode("latin-1")
            self.assertEqual(list(csv.reader(io.StringIO(sheet, newline=""))), [["c", text], [text, text]])

            page = PublishedPage(self.read("p.html"))
            shape = shape or page.elements
            self.assertEqual(page.elements, shape, value)
            read = {"CAPTION": page.parameters["Caption"], "ALT": page.parameters["Alt"],
                    "MENU": page.parameters["Menu"], "HASMENU": page.parameters["HasMenu"],
                    "WIDTH": page.attributes["plexoras-diagram"]["width"]}
            self.assertEqual({name: as_html(each) for name, each in read.items()}, dict.fromkeys(read, as_html(text)))
            style = page.parameters["XmlStyle"]
            for name in self.STYLE:
                (found,) = re.findall(f"<{name}>([^<]*)</>", style)
                self.assertEqual(unescaped(found), text, name)
            contents = re.findall("<(row|col|value)>([^<]*)</>", page.parameters["XmlContents"])
            self.assertEqual([unescaped(each) for _, each in contents], [text] * 3)

    def test_ten_megabytes(self):
        big = '"$(x)-->\\#(' * 900_000
        contents = f"<xml><rows><row>{big}</></><cols></><data></></xml>"
        for name, value, parameter in (("FontName", big, "XmlStyle"), ("colTitle", big, "XmlContents"),
                                       ("Contents", contents, "XmlContents")):
            self.write("p.html", OPENING % b"A" + CLOSING)
            self.done("set", "p.html", "--from", "-", stdin=f"{name}=".encode() + listed(value.encode()) + b"\n")
            self.done("publish", "p.html")
            (document,) = re.findall(f'<param name="{parameter}" value="([^"]*)">', self.read("p.html").decode())
            # html.unescape takes seconds for so many; `&amp;` comes last, as it makes new ones.
            for entity in sorted(set(re.findall("&[^;]*;", document)), key="&amp;".__eq__):
                document = document.replace(entity, html.unescape(entity))
            self.assertEqual(unescaped(document).count(big), 1, name)


if __name__ == "__main__":
    main()
