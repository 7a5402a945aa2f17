#include "module/registry_script.h"

#include <algorithm>
#include <utility>

namespace brantel {
namespace {

// Deeper nesting than any registry key has; keeps hostile scripts from exhausting the stack.
constexpr int kMaxDepth = 32;

enum class TokenKind { kWord, kText, kOpenBrace, kCloseBrace, kEquals, kEnd };

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::string text;
  int line = 0;
};

// Thrown inside the parser only.
struct Refusal {
  ScriptError error;
};

[[noreturn]] void Refuse(int line, std::string message) {
  throw Refusal{{line, std::move(message)}};
}

std::string Describe(const Token& token) {
  switch (token.kind) {
    case TokenKind::kWord:
      return "\"" + token.text + "\"";
    case TokenKind::kText:
      return "the text '" + token.text + "'";
    case TokenKind::kOpenBrace:
      return "\"{\"";
    case TokenKind::kCloseBrace:
      return "\"}\"";
    case TokenKind::kEquals:
      return "\"=\"";
    case TokenKind::kEnd:
      break;
  }
  return "the end of the script";
}

class Lexer {
 public:
  explicit Lexer(std::string_view text) : rest_(text) {}

  Token Next() {
    SkipBlanks();
    if (rest_.empty()) return {TokenKind::kEnd, "", line_};
    switch (rest_.front()) {
      case '{':
        return TakeMark(TokenKind::kOpenBrace);
      case '}':
        return TakeMark(TokenKind::kCloseBrace);
      case '=':
        return TakeMark(TokenKind::kEquals);
      case '\'':
        return TakeQuoted();
      default:
        return TakeWord();
    }
  }

 private:
  static bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

  void SkipBlanks() {
    while (!rest_.empty() && IsBlank(rest_.front())) {
      if (rest_.front() == '\n') ++line_;
      rest_.remove_prefix(1);
    }
  }

  Token TakeMark(TokenKind kind) {
    rest_.remove_prefix(1);
    return {kind, "", line_};
  }

  Token TakeQuoted() {
    Token token{TokenKind::kText, "", line_};
    rest_.remove_prefix(1);
    while (true) {
      const std::size_t length = std::min(rest_.find_first_of("'\n"), rest_.size());
      token.text.append(rest_.substr(0, length));
      rest_.remove_prefix(length);
      if (rest_.empty() || rest_.front() == '\n') Refuse(line_, "a text lacks its closing quote");
      rest_.remove_prefix(1);
      if (rest_.empty() || rest_.front() != '\'') return token;
      token.text.push_back('\'');
      rest_.remove_prefix(1);
    }
  }

  Token TakeWord() {
    const std::size_t length = std::min(rest_.find_first_of(" \t\r\n{}='"), rest_.size());
    Token token{TokenKind::kWord, std::string(rest_.substr(0, length)), line_};
    rest_.remove_prefix(length);
    return token;
  }

  std::string_view rest_;
  int line_ = 1;
};

class Parser {
 public:
  Parser(std::string_view text, std::string_view module_path)
      : lexer_(text), module_path_(module_path) {
    Advance();
  }

  RegistryScript ParseScript() {
    RegistryKey root;
    while (token_.kind != TokenKind::kEnd) {
      if (token_.kind != TokenKind::kWord || token_.text != "HKCR") {
        Refuse(token_.line, "expected the root key HKCR instead of " + Describe(token_));
      }
      Advance();
      ParseBlock(root, 1);
    }
    return std::move(root.subkeys);
  }

 private:
  void Advance() { token_ = lexer_.Next(); }

  void Expect(TokenKind kind, std::string_view what) {
    if (token_.kind != kind) {
      Refuse(token_.line, "expected " + std::string(what) + " instead of " + Describe(token_));
    }
    Advance();
  }

  // Takes the word if it stands here.
  bool Accept(std::string_view word) {
    if (token_.kind != TokenKind::kWord || token_.text != word) return false;
    Advance();
    return true;
  }

  void ParseBlock(RegistryKey& parent, int depth) {
    if (depth > kMaxDepth) Refuse(token_.line, "keys are nested too deeply");
    Expect(TokenKind::kOpenBrace, "\"{\"");
    while (token_.kind != TokenKind::kCloseBrace) {
      if (Accept("val")) {
        ParseValue(parent);
      } else {
        ParseKey(parent, depth);
      }
    }
    Advance();
  }

  void ParseValue(RegistryKey& key) {
    std::string name = TakeName();
    if (token_.kind != TokenKind::kEquals) {
      Refuse(token_.line, "expected \"=\" instead of " + Describe(token_));
    }
    key.values.push_back({std::move(name), TakeAssignedText()});
  }

  void ParseKey(RegistryKey& parent, int depth) {
    RegistryKey key;
    if (Accept("ForceRemove")) {
      key.removal = KeyRemoval::kForceRemove;
    } else if (Accept("NoRemove")) {
      key.removal = KeyRemoval::kNoRemove;
    }
    const int line = token_.line;
    key.name = TakeName();
    if (key.name.empty()) Refuse(line, "a key's name is empty");
    if (key.name.find('\\') != std::string::npos) {
      Refuse(line, "a key's name holds a backslash: " + key.name);
    }
    if (token_.kind == TokenKind::kEquals) key.default_value = TakeAssignedText();
    if (token_.kind == TokenKind::kOpenBrace) ParseBlock(key, depth + 1);
    parent.subkeys.push_back(std::move(key));
  }

  std::string TakeName() {
    if (token_.kind != TokenKind::kWord && token_.kind != TokenKind::kText) {
      Refuse(token_.line, "expected a name instead of " + Describe(token_));
    }
    return TakeSubstituted();
  }

  std::string TakeAssignedText() {
    Advance();  // the equals sign
    if (!Accept("s")) {
      Refuse(token_.line, "expected the type s instead of " + Describe(token_));
    }
    if (token_.kind != TokenKind::kText) {
      Refuse(token_.line, "expected a text in quotes instead of " + Describe(token_));
    }
    return TakeSubstituted();
  }

  std::string TakeSubstituted() {
    std::string text = Substitute(token_.text, token_.line);
    Advance();
    return text;
  }

  [[nodiscard]] std::string Substitute(std::string_view text, int line) const {
    std::string result;
    while (true) {
      const std::size_t start = text.find('%');
      result.append(text.substr(0, start));
      if (start == std::string_view::npos) return result;
      const std::size_t end = text.find('%', start + 1);
      if (end == std::string_view::npos) Refuse(line, "a percent sign stands alone; write %%");
      const std::string_view name = text.substr(start + 1, end - start - 1);
      if (name == "MODULE") {
        result.append(module_path_);
      } else if (name.empty()) {
        result.push_back('%');
      } else {
        Refuse(line, "unknown substitution %" + std::string(name) + "%");
      }
      text.remove_prefix(end + 1);
    }
  }

  Lexer lexer_;
  std::string_view module_path_;
  Token token_;
};

std::string Join(const std::string& parent, const std::string& name) {
  return parent.empty() ? name : parent + "\\" + name;
}

Result RegisterKeys(const std::vector<RegistryKey>& keys, const std::string& parent,
                    RegistryShell& shell);

Result RegisterKey(const RegistryKey& key, const std::string& path, RegistryShell& shell) {
  if (key.removal == KeyRemoval::kForceRemove) {
    if (const Result result = shell.DeleteTree(path); Failed(result)) return result;
  }
  if (const Result result = shell.CreateKey(path); Failed(result)) return result;
  if (key.default_value) {
    const Result result = shell.SetText(path, "", *key.default_value);
    if (Failed(result)) return result;
  }
  for (const RegistryValue& value : key.values) {
    const Result result = shell.SetText(path, value.name, value.text);
    if (Failed(result)) return result;
  }
  return RegisterKeys(key.subkeys, path, shell);
}

Result RegisterKeys(const std::vector<RegistryKey>& keys, const std::string& parent,
                    RegistryShell& shell) {
  for (const RegistryKey& key : keys) {
    const Result result = RegisterKey(key, Join(parent, key.name), shell);
    if (Failed(result)) return result;
  }
  return kOk;
}

Result UnregisterKeys(const std::vector<RegistryKey>& keys, const std::string& parent,
                      RegistryShell& shell);

Result UnregisterKey(const RegistryKey& key, const std::string& path, RegistryShell& shell) {
  if (key.removal == KeyRemoval::kForceRemove) return shell.DeleteTree(path);
  const Result below = UnregisterKeys(key.subkeys, path, shell);
  if (key.removal == KeyRemoval::kNoRemove) return below;
  const Result own = shell.DeleteIfWithoutSubkeys(path);
  return Failed(below) ? below : own;
}

Result UnregisterKeys(const std::vector<RegistryKey>& keys, const std::string& parent,
                      RegistryShell& shell) {
  Result first_failure = kOk;
  for (const RegistryKey& key : keys) {
    const Result result = UnregisterKey(key, Join(parent, key.name), shell);
    if (Failed(result) && !Failed(first_failure)) first_failure = result;
  }
  return first_failure;
}

}  // namespace

ScriptParse ParseRegistryScript(std::string_view text, std::string_view module_path) {
  try {
    return {Parser(text, module_path).ParseScript(), {}};
  } catch (Refusal& refusal) {
    return {std::nullopt, std::move(refusal.error)};
  }
}

Result RegisterScript(const RegistryScript& script, RegistryShell& shell) {
  return RegisterKeys(script, "", shell);
}

Result UnregisterScript(const RegistryScript& script, RegistryShell& shell) {
  return UnregisterKeys(script, "", shell);
}

}  // namespace brantel
