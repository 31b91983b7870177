// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/TableWalker.h"

#include <array>
#include <string>

namespace tvx::fuzz
{

namespace
{

constexpr std::size_t StringCount = 8;

// Some strings beside the texts that they were made from.
class StringModel final : public TableWalker<StringModel>
{
public:
    explicit StringModel(check::Trial& trial) : trial_(trial) {}

    // The buffer that it is made from goes away at once.
    void Create(const Step& step)
    {
        std::string text;
        for (std::uint32_t place = 0; place < step.first % 64; ++place)
            text += static_cast<char>(1 + (step.second + place * place) % 255);
        Keep(step, text);
    }

    void CreateLong(const Step& step) { Keep(step, std::string(step.first % 5000, '\xE4')); }

    void Share(const Step& step) { kept_[step.first % StringCount] = kept_[step.second % StringCount]; }

    void Drop(const Step& step) { kept_[step.first % StringCount] = {}; }

    void Compare() override
    {
        for (const auto& [string, text] : kept_)
        {
            if (!string)
                continue;
            trial_.Equal("GetText", string->GetText(), text);
            trial_.Equal("GetLength", string->GetLength(), static_cast<std::uint32_t>(text.size()));
        }
    }

    static constexpr Operation<StringModel> Operations[] = {
        {"create", &StringModel::Create},
        {"create-long", &StringModel::CreateLong},
        {"share", &StringModel::Share},
        {"drop", &StringModel::Drop},
    };

private:
    struct Kept
    {
        Ref<IString> string;
        std::string text;
    };

    void Keep(const Step& step, const std::string& text)
    {
        kept_[step.second % StringCount] = {check::MakeString(trial_, text.c_str()), text};
    }

    check::Trial& trial_;
    std::array<Kept, StringCount> kept_;
};

constexpr auto Names = GetNames(StringModel::Operations);

}  // namespace

const Walk StringWalk = {"string", check::StringExport, Names, &StringModel::Start};

}  // namespace tvx::fuzz
