// Brevant Script: a line-based tokenizer, a parser into a list of statements, and a small interpreter.
// The interpreter's only effect outside the script is bv::Speech::speak; nothing here starts a process.
#include "BrevantCocoaExtensions/interface/Script.hpp"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/interface/Speech.hpp"

namespace bv {

// The language's pieces: named (not anonymous) because Script::Program holds its statements.
namespace script_language {

constexpr const char* errorDomain = "BVScriptErrorDomain";
constexpr std::int64_t loadErrorCode = 1;
constexpr std::int64_t compileErrorCode = 2;
constexpr std::int64_t runErrorCode = 3;
constexpr std::uintmax_t largestScript = 1 << 20;

// A failure at a line of the source, turned into an Error at the top.
struct ScriptFailure {
    std::int64_t code;
    std::size_t line;
    std::string message;
};

Error errorOf(const ScriptFailure& failure) {
    return Error{
        errorDomain,
        failure.code,
        Text("Brevant Script error on line " + std::to_string(failure.line) + ": " + failure.message),
        {}};
}

// --- Tokens ---------------------------------------------------------------------------------------

struct Token {
    enum class Kind { Word, String, Number, Ampersand, LineEnd, End };
    Kind kind = Kind::End;
    Text text;  // the word, the string's value, or the number as written
    std::size_t line = 1;
};

std::string shown(const Token& token) {
    switch (token.kind) {
        case Token::Kind::Word:
        case Token::Kind::Number:
            return "\"" + token.text.toUtf8() + "\"";
        case Token::Kind::String:
            return "a text";
        case Token::Kind::Ampersand:
            return "\"&\"";
        case Token::Kind::LineEnd:
            return "the end of the line";
        case Token::Kind::End:
            break;
    }
    return "the end of the script";
}

bool isWordStart(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

class Tokenizer {
  public:
    explicit Tokenizer(std::u16string_view source) : source_(source) {}

    std::vector<Token> tokens() {
        std::vector<Token> out;
        while (true) {
            skipBlanksAndComments();
            if (at_ >= source_.size()) break;
            out.push_back(next());
        }
        out.push_back(Token{Token::Kind::End, {}, line_});
        return out;
    }

  private:
    [[noreturn]] void fail(const std::string& message) const {
        throw ScriptFailure{compileErrorCode, line_, message};
    }

    void skipBlanksAndComments() {
        while (at_ < source_.size()) {
            const char16_t unit = source_[at_];
            const bool comment =
                unit == u'#' || (unit == u'-' && at_ + 1 < source_.size() && source_[at_ + 1] == u'-');
            if (comment) {
                while (at_ < source_.size() && source_[at_] != u'\n')
                    ++at_;
            } else if (unit == u' ' || unit == u'\t' || unit == u'\r') {
                ++at_;
            } else {
                return;
            }
        }
    }

    Token next() {
        const char16_t unit = source_[at_];
        if (unit == u'\n') {
            ++at_;
            return Token{Token::Kind::LineEnd, {}, line_++};
        }
        if (unit == u'&') {
            ++at_;
            return Token{Token::Kind::Ampersand, Text("&"), line_};
        }
        if (unit == u'"') return string();
        if (isDigit(unit)) return number();
        if (isWordStart(unit)) return word();
        fail("unexpected character \"" + Text::fromUnit(unit).toUtf8() + "\"");
    }

    Token string() {
        Token token{Token::Kind::String, {}, line_};
        ++at_;  // the opening quote
        while (true) {
            if (at_ >= source_.size() || source_[at_] == u'\n') fail("the text is not closed on its line");
            const char16_t unit = source_[at_++];
            if (unit == u'"') return token;
            if (unit != u'\\') {
                token.text += unit;
                continue;
            }
            if (at_ >= source_.size()) fail("the text is not closed on its line");
            token.text += escaped(source_[at_++]);
        }
    }

    char16_t escaped(char16_t unit) const {
        switch (unit) {
            case u'"':
            case u'\\':
                return unit;
            case u'n':
                return u'\n';
            case u't':
                return u'\t';
            case u'r':
                return u'\r';
            default:
                fail("unknown escape \"\\" + Text::fromUnit(unit).toUtf8() + "\" in a text");
        }
    }

    Token number() {
        const std::size_t start = at_;
        while (at_ < source_.size() && isDigit(source_[at_]))
            ++at_;
        if (at_ + 1 < source_.size() && source_[at_] == u'.' && isDigit(source_[at_ + 1])) {
            ++at_;
            while (at_ < source_.size() && isDigit(source_[at_]))
                ++at_;
        }
        return Token{Token::Kind::Number, Text(source_.substr(start, at_ - start)), line_};
    }

    Token word() {
        const std::size_t start = at_;
        while (at_ < source_.size() && (isWordStart(source_[at_]) || isDigit(source_[at_])))
            ++at_;
        return Token{Token::Kind::Word, Text(source_.substr(start, at_ - start)), line_};
    }

    std::u16string_view source_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

// --- Program ----------------------------------------------------------------------------------------

struct Term {
    std::optional<Value> literal;  // a text, number or boolean; else a variable
    Text variable;
};

struct Statement {
    enum class Kind { Say, Return, Set, Error };
    Kind kind = Kind::Say;
    std::size_t line = 1;
    Text variable;            // set: the name
    std::vector<Term> terms;  // the expression: terms joined by "&"; empty for a bare "return"
};

bool isKeyword(const Text& word) {
    for (const char* keyword : {"say", "return", "set", "to", "error", "true", "false"})
        if (word == Text(keyword)) return true;
    return false;
}

Value numberValue(const Token& token) {
    const std::string digits = token.text.toUtf8();
    if (digits.find('.') != std::string::npos)
        return Value(Number::float64(std::strtod(digits.c_str(), nullptr)));
    errno = 0;
    const long long whole = std::strtoll(digits.c_str(), nullptr, 10);
    if (errno == ERANGE)
        throw ScriptFailure{compileErrorCode, token.line, "the number " + digits + " is too large"};
    return Value(Number::int64(whole));
}

class Parser {
  public:
    explicit Parser(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

    std::vector<Statement> statements() {
        std::vector<Statement> out;
        while (peek().kind != Token::Kind::End) {
            if (peek().kind == Token::Kind::LineEnd) {
                ++at_;
                continue;
            }
            out.push_back(statement());
            if (peek().kind != Token::Kind::LineEnd && peek().kind != Token::Kind::End)
                fail("expected the end of the line but found " + shown(peek()));
        }
        return out;
    }

  private:
    const Token& peek() const { return tokens_[at_]; }
    [[noreturn]] void fail(const std::string& message) const {
        throw ScriptFailure{compileErrorCode, peek().line, message};
    }

    Statement statement() {
        const Token& command = peek();
        if (command.kind != Token::Kind::Word) fail("expected a command but found " + shown(command));
        Statement result;
        result.line = command.line;
        ++at_;
        if (command.text == Text("say")) {
            result.kind = Statement::Kind::Say;
            result.terms = expression();
        } else if (command.text == Text("error")) {
            result.kind = Statement::Kind::Error;
            result.terms = expression();
        } else if (command.text == Text("return")) {
            result.kind = Statement::Kind::Return;
            if (peek().kind != Token::Kind::LineEnd && peek().kind != Token::Kind::End)
                result.terms = expression();
        } else if (command.text == Text("set")) {
            result.kind = Statement::Kind::Set;
            result.variable = variableName();
            if (peek().kind != Token::Kind::Word || peek().text != Text("to"))
                fail("expected \"to\" but found " + shown(peek()));
            ++at_;
            result.terms = expression();
        } else {
            --at_;
            fail("unknown command " + shown(command));
        }
        return result;
    }

    Text variableName() {
        if (peek().kind != Token::Kind::Word || isKeyword(peek().text))
            fail("expected a variable name but found " + shown(peek()));
        return tokens_[at_++].text;
    }

    std::vector<Term> expression() {
        std::vector<Term> terms{term()};
        while (peek().kind == Token::Kind::Ampersand) {
            ++at_;
            terms.push_back(term());
        }
        return terms;
    }

    Term term() {
        const Token& token = tokens_[at_++];
        if (token.kind == Token::Kind::String) return Term{Value(token.text), {}};
        if (token.kind == Token::Kind::Number) return Term{numberValue(token), {}};
        if (token.kind == Token::Kind::Word && (token.text == Text("true") || token.text == Text("false")))
            return Term{Value(Number::boolean(token.text == Text("true"))), {}};
        if (token.kind == Token::Kind::Word && !isKeyword(token.text)) return Term{std::nullopt, token.text};
        --at_;
        fail("expected a value but found " + shown(token));
    }

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
};

// --- Running ----------------------------------------------------------------------------------------

Text asText(const Value& value) {
    if (const Number* number = value.number(); number != nullptr && number->isBool())
        return Text(number->boolValue() ? "true" : "false");
    return value.description();
}

class Interpreter {
  public:
    // The value of the "return" that ends the script, or the null Value.
    Value run(const std::vector<Statement>& statements) {
        for (const Statement& statement : statements) {
            switch (statement.kind) {
                case Statement::Kind::Say:
                    if (!Speech::speak(asText(evaluate(statement))))
                        throw ScriptFailure{runErrorCode, statement.line, "speech is unavailable"};
                    break;
                case Statement::Kind::Set:
                    variables_[statement.variable] = evaluate(statement);
                    break;
                case Statement::Kind::Error:
                    throw ScriptFailure{runErrorCode, statement.line, asText(evaluate(statement)).toUtf8()};
                case Statement::Kind::Return:
                    return statement.terms.empty() ? Value() : evaluate(statement);
            }
        }
        return Value();
    }

  private:
    Value evaluate(const Statement& statement) const {
        if (statement.terms.size() == 1) return termValue(statement.terms.front(), statement.line);
        Text joined;
        for (const Term& term : statement.terms)
            joined += asText(termValue(term, statement.line));
        return Value(joined);
    }

    Value termValue(const Term& term, std::size_t line) const {
        if (term.literal) return *term.literal;
        const auto found = variables_.find(term.variable);
        if (found == variables_.end())
            throw ScriptFailure{runErrorCode, line,
                                "the variable " + term.variable.toUtf8() + " is not defined"};
        return found->second;
    }

    std::map<Text, Value> variables_;
};

}  // namespace script_language

using namespace script_language;

struct Script::Program {
    std::vector<Statement> statements;
};

Script::Script(Text source) : source_(std::move(source)) {}
Script::~Script() = default;

std::shared_ptr<Script> Script::initWithSource(const Text& source) {
    return std::make_shared<Script>(source);
}

std::shared_ptr<Script> Script::initWithContentsOfURL(const Text& path, Error* error) {
    const std::string file = path.toUtf8();
    std::error_code problem;
    const bool regular = std::filesystem::is_regular_file(file, problem);
    const std::uintmax_t size = regular ? std::filesystem::file_size(file, problem) : 0;
    std::ifstream in(file, std::ios::binary);
    if (!regular || problem || size > largestScript || !in) {
        const std::string reason = size > largestScript ? "is too large for a script" : "cannot be read";
        Error::report(error,
                      Error{errorDomain, loadErrorCode, Text("The script " + file + " " + reason + "."), {}});
        return nullptr;
    }
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return std::make_shared<Script>(Text(bytes));
}

bool Script::compileAndReturnError(Error* error) {
    if (program_) return true;
    try {
        auto program = std::make_unique<Program>();
        program->statements = Parser(Tokenizer(source_.view()).tokens()).statements();
        program_ = std::move(program);
        return true;
    } catch (const ScriptFailure& failure) {
        return Error::report(error, errorOf(failure));
    }
}

std::optional<Value> Script::executeAndReturnError(Error* error) {
    if (!compileAndReturnError(error)) return std::nullopt;
    try {
        return Interpreter().run(program_->statements);
    } catch (const ScriptFailure& failure) {
        Error::report(error, errorOf(failure));
        return std::nullopt;
    }
}

}  // namespace bv
