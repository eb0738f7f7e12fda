// Family names of question type codes, from the library's predicates.
#include "QuestionFamilies.hpp"

#include <utility>
#include <vector>

#include "BrevantCocoaExtensions/responses/QuestionCodes.hpp"

namespace brevant {

std::string questionFamilies(std::int32_t code) {
    const std::vector<std::pair<const char*, bool (*)(std::int32_t)>> all{
        {"true/false", bv::IsQuestionCodeBoolean},
        {"simple sequence", bv::IsQuestionCodeSimpleSequence},
        {"multiple choice", bv::IsQuestionCodeMultipleChoice},
        {"lettered multiple choice", bv::IsQuestionCodeMultipleChoiceAlpha},
        {"multiple mark", bv::IsQuestionCodeMultipleMark},
        {"fill in the blank", bv::IsQuestionCodeFillInTheBlank},
        {"rating scale", bv::IsQuestionCodeRatingScale},
        {"sequence", bv::IsQuestionCodeSequence},
    };
    std::string names;
    for (const auto& [name, belongs] : all) {
        if (!belongs(code)) continue;
        if (!names.empty()) names += ", ";
        names += name;
    }
    return names.empty() ? "none" : names;
}

}  // namespace brevant
