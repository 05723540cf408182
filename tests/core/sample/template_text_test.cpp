#include "generator/template_text.h"

#include <gtest/gtest.h>

namespace ferrolund::sample {
namespace {

struct Case {
    const char* name;
    std::string main;  // the source "main.xml"; "part.xml" holds "<P>{{v}}</P>\n<Q/>\n"
    Vars vars;
    std::string expected;  // the expansion, or the start of the failure
    bool fails = false;
};

TEST(TemplateText, Expansions) {
    const Case cases[] = {
        {"plain names", "<A>{{x}}</A>\n", {{"x", "1"}}, "<A>1</A>\r\n"},
        {"include indented like its line",
         "<R>\n\t{{@part.xml v=2}}\n</R>\n",
         {},
         "<R>\r\n\t<P>2</P>\r\n\t<Q/>\r\n</R>\r\n"},
        {"include passes a name on", "\t\t{{@part.xml v=$x}}\n", {{"x", "7"}}, "\t\t<P>7</P>\r\n\t\t<Q/>\r\n"},
        {"quoted values keep blanks", "{{@part.xml v=\"a b\"}}\n", {}, "<P>a b</P>\r\n<Q/>\r\n"},
        {"the file itself may be a name", "{{@$f v=3}}\n", {{"f", "part.xml"}}, "<P>3</P>\r\n<Q/>\r\n"},
        {"float alt encodings", "{{x.alt}} {{x.alt64}}\n", {{"x", "0.1"}}, "000000A09999B93F 9A9999999999B93F\r\n"},
        {"GUID halves and text",
         "{{g.u0}} {{g.u1}} {{g.dev}}\n",
         {{"g", "0ecf6b26-9b3a-4228-bb35-1bdbc3c6e223"}},
         "4767230879230552870 2585847680561001915 0ecf6b26-9b3a-4228-bb35-1bdbc3c6e223\r\n"},
        {"a value of several lines: the rest at the margin",
         "\t\t<B>{{m}}</B>\n",
         {{"m", "1\n2\n3"}},
         "\t\t<B>1\r\n2\r\n3</B>\r\n"},
        {"CR LF sources read alike", "<A>{{x}}</A>\r\n<B/>\r\n", {{"x", "1"}}, "<A>1</A>\r\n<B/>\r\n"},
        {"unknown name", "<A>\n<B>{{nope}}</B>\n", {}, "sample source main.xml, line 2: unknown name {{nope}}", true},
        {"unknown suffix", "{{x.wat}}\n", {{"x", "1"}}, "sample source main.xml, line 1: unknown name {{x.wat}}", true},
        {"alt of no number",
         "{{x.alt}}\n",
         {{"x", "abc"}},
         "sample source main.xml, line 1: {{x.alt}}: abc is no number",
         true},
        {"missing include",
         "{{@other.xml}}\n",
         {},
         "sample source main.xml, line 1: sample source other.xml does not exist",
         true},
        {"include without pairs",
         "{{@part.xml v}}\n",
         {},
         "sample source main.xml, line 1: an include line needs",
         true},
        {"unknown passed name", "{{@part.xml v=$zz}}\n", {}, "sample source main.xml, line 1: unknown name $zz", true},
        {"error inside an include",
         "<A/>\n{{@part.xml}}\n",
         {},
         "sample source main.xml, line 2: sample source part.xml, line 1: unknown name {{v}}",
         true},
        {"endless include", "{{@main.xml}}\n", {}, "sample source main.xml, line 1: ", true},
    };
    for (const Case& c : cases) {
        const SourceSet sources = {{"main.xml", c.main}, {"part.xml", "<P>{{v}}</P>\n<Q/>\n"}};
        Expander expander(sources, "out.bin");
        Expansion expansion;
        const Failure failure = expander.Expand("main.xml", c.vars, expansion);
        if (c.fails) {
            ASSERT_TRUE(failure) << c.name;
            EXPECT_EQ(failure->rfind(c.expected, 0), 0u) << c.name << ": " << *failure;
        } else {
            ASSERT_FALSE(failure) << c.name << ": " << *failure;
            EXPECT_EQ(expansion.text, c.expected) << c.name;
        }
    }
}

TEST(TemplateText, IdsAndKeysAreFreshAndRepeatable) {
    const SourceSet sources = {{"main.xml", "{{id}} {{id}} {{key}} {{key}}\n"}};
    auto expand = [&](const char* output) {
        Expander expander(sources, output);
        Expansion expansion;
        EXPECT_FALSE(expander.Expand("main.xml", {}, expansion));
        return expansion.text;
    };
    const std::string first = expand("a.bin");
    EXPECT_EQ(first, expand("a.bin"));
    EXPECT_NE(first, expand("b.bin"));
    const auto words = Lines(first)[0];
    const std::size_t one = words.find(' '), two = words.find(' ', one + 1), three = words.find(' ', two + 1);
    EXPECT_NE(words.substr(0, one), words.substr(one + 1, two - one - 1));
    EXPECT_NE(words.substr(two + 1, three - two - 1), words.substr(three + 1));
}

TEST(TemplateText, ConverterLinesPointAtTheirSource) {
    const SourceSet sources = {{"main.xml", "<R>\n\t{{@part.xml v=1}}\n</R>\n"}, {"part.xml", "<P>{{v}}</P>\n<Q/>\n"}};
    Expander expander(sources, "out.bin");
    Expansion expansion;
    ASSERT_FALSE(expander.Expand("main.xml", {}, expansion));
    struct Case {
        std::string message;
        std::string located;
    };
    const Case cases[] = {
        {"line 1: bad", "sample source main.xml, line 1: bad"},
        {"line 3: worse", "sample source part.xml, line 2: worse"},
        {"line 4: end", "sample source main.xml, line 3: end"},
        {"line 99: far", "sample source main.xml: line 99: far"},
        {"at byte 5: odd", "sample source main.xml: at byte 5: odd"},
    };
    for (const Case& c : cases) EXPECT_EQ(expander.Locate(expansion, c.message), c.located);
}

}  // namespace
}  // namespace ferrolund::sample
