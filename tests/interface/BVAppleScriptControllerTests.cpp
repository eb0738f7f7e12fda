// The script controller: scripts found by name in the main bundle and remembered, token replacement, exact
// log lines, and token values that stay data.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/interface/BVAppleScriptController.hpp"
#include "interface/InterfaceTestSupport.hpp"

using bv::Text;
using bv::Value;
using Controller = bv::BVAppleScriptController;

namespace {
class ScriptController : public bvtest::InterfaceTest {
  protected:
    void SetUp() override {
        InterfaceTest::SetUp();
        (void)controller.scriptForName(Text("NoSuchScript"));  // forgets the path an earlier test left
        logged_.clear();
    }
    Controller& controller = Controller::sharedInstance();
};
}  // namespace

TEST_F(ScriptController, FindsScriptsByBareNameAndRemembersTheLastPath) {
    resource("Greeting.scpt", "say \"Hello\"");
    resource("Greeting.applescript", "say \"not this one\"");
    resource("Farewell.applescript", "return \"Bye\"");
    EXPECT_EQ(controller.sourceForScriptNamed(Text("/somewhere/else/Greeting.applescript")),
              Text("say \"Hello\""));
    EXPECT_EQ(controller.scriptURL(), Text(resourcePath("Greeting.scpt")));
    EXPECT_EQ(controller.executeScriptNamed(Text("Farewell")), Value("Bye"));
    EXPECT_EQ(controller.scriptURL(), Text(resourcePath("Farewell.applescript")));

    // While the name matches ignoring case, the remembered path is used without looking again.
    std::filesystem::remove(resourcePath("Farewell.applescript"));
    resource("farewell.scpt", "return \"new\"");
    EXPECT_EQ(controller.scriptForName(Text("FAREWELL")), nullptr);
    EXPECT_EQ(logged_, std::vector<std::string>{"The script " + resourcePath("Farewell.applescript") +
                                                " cannot be read."});
    logged_.clear();

    EXPECT_EQ(controller.executeScriptNamed(Text("Missing")), std::nullopt);
    EXPECT_EQ(controller.scriptURL(), std::nullopt);
    EXPECT_EQ(logged_,
              std::vector<std::string>{"The script Missing is not among the application's resources."});
}

TEST_F(ScriptController, ReplacesTokensKeyAfterKeyInKeyOrder) {
    const auto replace = [](const char* source, bv::ValueDictionary values) {
        return Controller::replaceTokensInSourceWithValues(Text(source), values);
    };
    const struct {
        const char* source;
        bv::ValueDictionary values;
        const char* expected;
    } cases[] = {
        {"say \"NAME, well done NAME\"", {{Text("NAME"), Value("Ada")}}, "say \"Ada, well done Ada\""},
        {"A B", {{Text("B"), Value("A")}, {Text("A"), Value("B")}}, "A A"},  // "A" first, then every "B"
        {"A", {{Text("A"), Value("B!")}, {Text("B"), Value("c")}}, "c!"},    // a value holding a later key
        {"name NAME", {{Text("NAME"), Value(3)}}, "name 3"},  // case-sensitive, numbers as text
        {"AAA", {{Text("AA"), Value("A")}}, "AA"},            // left to right, not into its own result
    };
    for (const auto& c : cases)
        EXPECT_EQ(replace(c.source, c.values), Text(c.expected)) << c.source;
    EXPECT_EQ(Controller::replaceTokensInSourceWithValues(Text("say \"X\""), bv::ValueDictionary{}),
              Text("say \"X\""));
    EXPECT_EQ(Controller::replaceTokensInSourceWithValues(Text("say \"X\""), std::nullopt),
              Text("say \"X\""));
    EXPECT_EQ(
        Controller::replaceTokensInSourceWithValues(Text(""), bv::ValueDictionary{{Text("X"), Value(1)}}),
        std::nullopt);
    EXPECT_EQ(Controller::replaceTokensInSourceWithValues(std::nullopt, std::nullopt), std::nullopt);
}

TEST_F(ScriptController, TokenValuesAreSpokenOrAnsweredAsDataNeverRun) {
    resource("Welcome.scpt", "say \"STUDENT\"\nreturn \"STUDENT\"");
    const std::string marker = path("ran");
    const std::string literal = "$(touch " + marker + "); `touch " + marker + "` & 'x' | rm -rf ~";
    EXPECT_EQ(controller.executeScriptNamedWithArguments(
                  Text("Welcome"), bv::ValueDictionary{{Text("STUDENT"), Value(literal)}}),
              Value(literal));
    EXPECT_EQ(spoken_, std::vector<std::string>{literal});

    const std::string breakout = "x\"\ndo shell script \"touch " + marker + "\"\nsay \"";
    EXPECT_EQ(controller.executeScriptNamedWithArguments(
                  Text("Welcome"), bv::ValueDictionary{{Text("STUDENT"), Value(breakout)}}),
              std::nullopt);
    EXPECT_EQ(logged_, std::vector<std::string>{"Brevant Script error on line 2: unknown command \"do\""});
    EXPECT_EQ(controller.executeScriptNamedWithArguments(
                  Text("Welcome"), bv::ValueDictionary{{Text("STUDENT"), Value("a\"; rm -rf /")}}),
              std::nullopt);
    EXPECT_FALSE(exists("ran"));
}

TEST_F(ScriptController, ReplaceAndExecuteRunsTheNamedScriptUnreplaced) {
    resource("Greeting.scpt", "say \"Hello NAME\"");
    resource("Broken.scpt", "say \"NAME\"\nerror \"no projector\"");
    const bv::ValueDictionary values{{Text("NAME"), Value("Ada")}};
    EXPECT_EQ(controller.replaceTokensWithValuesForScriptNamedAndExecute(values, Text("Greeting"), false),
              Text("say \"Hello Ada\""));
    EXPECT_TRUE(spoken_.empty());
    EXPECT_EQ(controller.replaceTokensWithValuesForScriptNamedAndExecute(values, Text("Greeting"), true),
              Text("say \"Hello Ada\""));
    EXPECT_EQ(spoken_, std::vector<std::string>{"Hello NAME"});
    EXPECT_EQ(controller.replaceTokensWithValuesForScriptNamedAndExecute(values, Text("Broken"), true),
              std::nullopt);
    EXPECT_EQ(logged_, std::vector<std::string>{"Brevant Script error on line 2: no projector"});
}
