// MTBlockKernels.cpp - the index of the vocabulary by class.
#include "MTParserLib/run/MTBlockKernels.h"

#include "MTParserLib/MTParserDefFuncs.h"
#include "platform/KeptWhileLoaded.h"

#include <typeindex>
#include <unordered_map>

namespace {

using Index = std::unordered_map<std::type_index, const MTBlockKernels*>;

const Index& blockKernelsByClass()
{
    static platform::KeptWhileLoaded<Index> index([] {
        Index all;
        for (const VocabularyEntry& entry : getVocabulary())
        {
            all.emplace(*entry.type, entry.blockKernels);
        }
        return all;
    }());
    return *index;
}

}

MTBuiltInBlocks findBlockKernels(const IMathExprItemEvaluator& item)
{
    const Index& index = blockKernelsByClass();
    const auto found = index.find(typeid(item));
    return found == index.end() ? MTBuiltInBlocks{false, nullptr} : MTBuiltInBlocks{true, found->second};
}
