#include "cli/located_json.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>

namespace velc {

namespace {

using Json = nlohmann::json;
using Kind = LocatedJson::Kind;

constexpr std::size_t kDeepest = 100;

// Tells the builder how far the parser has read.
class ReadingPlace {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  ReadingPlace(const char* at, const char*& furthest) : at_(at), furthest_(&furthest) {}
  reference operator*() const { return *at_; }
  ReadingPlace& operator++() {
    *furthest_ = ++at_;
    return *this;
  }
  bool operator==(const ReadingPlace& other) const { return at_ == other.at_; }
  bool operator!=(const ReadingPlace& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  const char** furthest_;
};

// Takes the events of the parser. A token lies between the one before it and the place up to which
// the parser has read.
class Builder {
 public:
  Builder(std::string_view text, LocatedJson& root, JsonFault& fault)
      : text_(text), furthest_(text.data()), root_(&root), fault_(&fault) {}

  const char*& furthest() { return furthest_; }

  // The names are those that the parser calls.
  bool null() { return add(Kind::Null, token()) != nullptr; }
  bool boolean(bool value) {
    add(Kind::Flag, token())->flag = value;
    return true;
  }
  bool number_integer(Json::number_integer_t value) { return number(static_cast<double>(value)); }
  bool number_unsigned(Json::number_unsigned_t value) { return number(static_cast<double>(value)); }
  bool number_float(Json::number_float_t value, const std::string& /*text*/) {
    return number(value);
  }
  bool string(std::string& value) {
    add(Kind::Text, token())->text = std::move(value);
    return true;
  }
  bool binary(Json::binary_t& /*value*/) { return false; }
  bool start_object(std::size_t /*size*/) { return open(Kind::Object); }
  bool start_array(std::size_t /*size*/) { return open(Kind::List); }
  bool key(std::string& value) {
    key_ = std::move(value);
    keySpan_ = token();
    return true;
  }
  bool end_object() { return close(); }
  bool end_array() { return close(); }
  bool parse_error(std::size_t byte, const std::string& /*last*/, const Json::exception& error) {
    const std::size_t at = std::min(byte == 0 ? 0 : byte - 1, text_.size());
    const std::string message = error.what();
    const std::size_t dash = message.find(" - ");
    const std::size_t reason = dash == std::string::npos ? 0 : dash + 3;
    fault_->span = {at, std::min(at + 1, text_.size())};
    fault_->text = message.substr(reason, message.find("; last read:") - reason);
    return false;
  }

 private:
  TextSpan token() {
    const std::size_t begin = std::min(text_.find_first_not_of(" \t\r\n:,", last_), text_.size());
    last_ = static_cast<std::size_t>(furthest_ - text_.data());
    return {begin, last_};
  }
  bool number(double value) {
    // The parser has read the character behind the number.
    TextSpan span = token();
    span.end = std::min(text_.find_first_not_of("+-.0123456789Ee", span.begin), text_.size());
    last_ = span.end;
    add(Kind::Number, span)->number = value;
    return true;
  }
  LocatedJson* add(Kind kind, TextSpan span) {
    LocatedJson* value = root_;
    if (!open_.empty()) {
      open_.back()->members.push_back({std::move(key_), keySpan_, {}});
      value = &open_.back()->members.back().value;
      key_.clear();
    }
    value->kind = kind;
    value->span = span;
    return value;
  }
  bool open(Kind kind) {
    const TextSpan span = token();
    if (open_.size() == kDeepest) {
      *fault_ = {span, "this is nested too deeply"};
      return false;
    }
    open_.push_back(add(kind, span));
    return true;
  }
  bool close() {
    open_.back()->span.end = token().end;
    open_.pop_back();
    return true;
  }

  std::string_view text_;
  const char* furthest_;
  std::size_t last_ = 0;  // the end of the last token
  LocatedJson* root_;
  JsonFault* fault_;
  // Each is the last member of the one before it, so that they stay in place.
  std::vector<LocatedJson*> open_;
  std::string key_;
  TextSpan keySpan_;
};

}  // namespace

bool parseLocated(std::string_view text, LocatedJson& root, JsonFault& fault) {
  Builder builder(text, root, fault);
  const ReadingPlace begin(text.data(), builder.furthest());
  const ReadingPlace end(text.data() + text.size(), builder.furthest());
  return Json::sax_parse(begin, end, &builder);
}

}  // namespace velc
