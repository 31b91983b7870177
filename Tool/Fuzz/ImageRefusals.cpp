// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/ImageRefusals.h"

#include "Tool/Checks/ImageBench.h"
#include "Tool/Checks/ImageDoubles.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/Refusals.h"

#include <cstdint>

namespace tvx::fuzz
{

namespace
{

// What a factory and images are called with to be refused. Nothing comes out.
struct Subject
{
    struct Outs
    {
        IImage* image;
        IConstImage* view;

        bool operator==(const Outs&) const = default;
    };

    IImageFactory& factory;
    IImage& image;
    IConstImage& view;
    IImage& moved;  // one whose pixels were moved away
    IImage& foreign;
    IConstImage& foreignView;
    Outs outs;
};

constexpr Refusal<Subject> Refused[] = {
    {"Create with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.Create(2, 2, 0, 0, 0, nullptr); }},
    {"Create of too long rows", Silent, TVX_E_EXCEPTION,
     [](Subject& on) { return on.factory.Create(INT32_MAX, 1, 1, 0, 0, &on.outs.image); }},
    {"CreateCopy of null", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateCopy(nullptr, &on.outs.image); }},
    {"CreateCopy with a null out", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateCopy(&on.image, nullptr); }},
    {"CreateCopy of a view with a null out", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateCopy(&on.view, nullptr); }},
    {"CreateCopy of an image without its pixels", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateCopy(&on.moved, &on.outs.image); }},
    {"CreateConstCopy of null", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateConstCopy(nullptr, &on.outs.view); }},
    {"CreateConstCopy of a view with a null out", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateConstCopy(&on.view, nullptr); }},
    {"CreateConstCopy of an image without its pixels", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.CreateConstCopy(&on.moved, &on.outs.view); }},
    {"MakeConst of null", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.MakeConst(nullptr, &on.outs.view); }},
    {"MakeConst with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.MakeConst(&on.image, nullptr); }},
    {"MakeConst of an image that others hold", Precondition, TVX_E_PRECONDITION,
     [](Subject& on)
     {
         const Ref<IImage> another(&on.image);
         return on.factory.MakeConst(&on.image, &on.outs.view);
     }},
    {"MakeConst of an image of another make", FailIfNull, TVX_E_FAIL,
     [](Subject& on) { return on.factory.MakeConst(&on.foreign, &on.outs.view); }},
    {"MakeMutable of null", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.MakeMutable(nullptr, &on.outs.image); }},
    {"MakeMutable with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.factory.MakeMutable(&on.view, nullptr); }},
    {"MakeMutable of a view that others hold", Precondition, TVX_E_PRECONDITION,
     [](Subject& on)
     {
         const Ref<IConstImage> another(&on.view);
         return on.factory.MakeMutable(&on.view, &on.outs.image);
     }},
    {"MakeMutable of a view of another make", FailIfNull, TVX_E_FAIL,
     [](Subject& on) { return on.factory.MakeMutable(&on.foreignView, &on.outs.image); }},
    {"MakeMutable of an image that can change", FailIfNull, TVX_E_FAIL,
     [](Subject& on) { return on.factory.MakeMutable(&on.moved, &on.outs.image); }},
    {"SetColorFormat of an image without its pixels", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.moved.SetColorFormat(-1); }},
    {"SetRowOrder of an image without its pixels", Precondition, TVX_E_PRECONDITION,
     [](Subject& on) { return on.moved.SetRowOrder(-1); }},
};

}  // namespace

void TryImageRefused(check::Trial& trial, IImageFactory& factory, IImage& image, IConstImage& view,
                     std::uint32_t number)
{
    const auto moved = check::MakeImage(trial, check::ImageShape());
    const auto taker = check::MoveAway(trial, moved);
    const Ref<IImage> foreign(MakeRef<check::ForeignImage>());
    const Ref<IConstImage> foreignView(MakeRef<check::ForeignConstImage>());
    TryRefused(trial, Refused, number, Subject{factory, image, view, *moved, *foreign, *foreignView, {}});
    CompareCount(trial, "an image without its pixels", *moved, 1);
    CompareCount(trial, "an image of another make", *foreign, 1);
    CompareCount(trial, "a view of another make", *foreignView, 1);
}

}  // namespace tvx::fuzz
