#include "CheckFindings.h"
#include "JsonParts.h"

namespace weldline {

std::string findingsJson(const CheckedInput& input, const std::vector<Finding>& findings) {
    Json list = Json::array();
    for (const Finding& finding : findings)
        list.push_back({{"name", finding.name},
                        {"level", finding.worthALook ? "look" : "ok"},
                        {"value", number(finding.value)},
                        {"text", finding.text},
                        {"consequence", textOrNull(finding.consequence)},
                        {"advice", textOrNull(finding.advice)}});
    return dumped(Json{{"schema", "weldline-check/1"},
                       {"program", programJson()},
                       {"input", input.file},
                       {"field", input.field},
                       {"findings", list}});
}

}  // namespace weldline
