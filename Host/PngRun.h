// SPDX-License-Identifier: MIT
#pragma once

#include <png.h>

#include <csetjmp>

namespace tvx::host
{

// One use of the PNG library, which ends an operation that fails by a jump. So a run works in steps: member functions in which
// nothing lives that has to be destroyed, because the jump out of one destroys nothing. What is needed lives in the run.
class PngRun
{
public:
    PngRun() = default;
    PngRun(const PngRun&) = delete;
    PngRun& operator=(const PngRun&) = delete;

    // Gives whether the step came to its end. A run whose step did not is over.
    template <class Run>
    bool Do(void (Run::*step)())
    {
        if (setjmp(jump_) != 0)
            return false;
        (static_cast<Run*>(this)->*step)();
        return true;
    }

    // Why the last step did not come to its end.
    const char* GetProblem() const { return problem_; }

protected:
    ~PngRun() = default;

    // What the library calls for an error, and for a warning: those are nobody's business.
    static void OnError(png_structp png, png_const_charp problem);
    static void OnWarning(png_structp png, png_const_charp problem);

    // Ends the step.
    [[noreturn]] void Leave(const char* problem);

    // Samples of 16 bits stand in the file with the high byte first.
    void SwapWhereNeeded(unsigned bits);

    png_structp png_ = nullptr;  // the library's handle of this use; the class that derives from this makes and ends it
    png_infop info_ = nullptr;   // what the library knows of the picture; goes with png_

private:
    std::jmp_buf jump_;
    char problem_[128] = "";
};

}  // namespace tvx::host
