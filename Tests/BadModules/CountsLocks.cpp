// SPDX-License-Identifier: MIT
#include "Platform/ThreadId.h"
#include "Tests/BadModules/Images.h"
#include "Tests/BadModules/OneExport.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace tvx::bad
{

namespace
{

// Is unlocked only by as many calls as have locked it.
class Wrong final : public ForwardingImage
{
public:
    using ForwardingImage::ForwardingImage;

    void LockRead() override
    {
        Count(1);
        ForwardingImage::LockRead();
    }
    void LockWrite() override
    {
        Count(1);
        ForwardingImage::LockWrite();
    }
    void Unlock() override
    {
        if (Count(-1) <= 0)
            ForwardingImage::Unlock();
    }

private:
    // The holds of this thread, with the change.
    int Count(int change)
    {
        const std::lock_guard guard(lock_);
        int& holds = holds_[Platform::GetCurrentThreadId()];
        holds = std::max(holds + change, 0);
        return holds;
    }

    std::mutex lock_;
    std::map<std::uint32_t, int> holds_;
};

}  // namespace

constexpr Export Exports[] = {{ImageId, &ImagesOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
