#include "cli/printed_values.h"

#include "cli/value_json.h"
#include "cli/value_parts.h"

namespace velc {

std::string printedValues(ValuesForm form, const Places& places,
                          const std::vector<refhost::ProgramVariable>& printed,
                          std::string_view bytes) {
  std::string text;
  for (const refhost::ProgramVariable& variable : printed) {
    const std::string name = places.displayName(variable);
    if (form == ValuesForm::Text) {
      text += name + " = " + partsText(*variable.shape, bytes) + '\n';
    } else {
      text += (text.empty() ? "\n  " : ",\n  ") + jsonString(name) + ": " +
              valueJson(*variable.shape, bytes);
    }
  }
  return form == ValuesForm::Text ? text : "{" + text + "\n}\n";
}

}  // namespace velc
