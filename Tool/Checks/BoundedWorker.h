// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Trial.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <queue>
#include <string>
#include <thread>
#include <utility>

namespace tvx::check
{

// A thread that does what it is told, one thing after the other. Nobody waits for it without a limit: work that never ends
// fails the check, and the thread is left behind.
//
// Work records and never expects. It has a reference of its own on what it may wait in, which stays as long as it waits. What
// else it uses is declared before the worker, and locks that it may wait for behind it, so that a check that fails ends the
// locks, then the work, then the rest.
class BoundedWorker
{
public:
    BoundedWorker() : orders_(std::make_shared<Orders>()), thread_([orders = orders_] { Run(*orders); }) {}

    ~BoundedWorker()
    {
        auto ended = Begin(nullptr);
        if (ended.wait_for(LastLimit) == std::future_status::ready)
            thread_.join();
        else
            thread_.detach();
    }

    BoundedWorker(const BoundedWorker&) = delete;
    BoundedWorker& operator=(const BoundedWorker&) = delete;

    // The future is ready when the work is done; it may be thrown away.
    std::future<void> Begin(std::function<void()> work)
    {
        Order order{std::move(work), {}};
        auto done = order.done.get_future();
        const std::lock_guard guard(orders_->lock);
        orders_->queue.push(std::move(order));
        orders_->changed.notify_one();
        return done;
    }

    // Waits until the work is done.
    void Do(Trial& trial, const std::string& what, std::function<void()> work)
    {
        auto done = Begin(std::move(work));
        ExpectEnd(trial, what, done);
    }

    static void ExpectEnd(Trial& trial, const std::string& what, const std::future<void>& done)
    {
        trial.Expect(done.wait_for(Limit) == std::future_status::ready, what + " to end", "no end within five seconds");
    }

    // No work that waits comes to its end meanwhile. Work that does not wait as it should has the time to show it.
    static void ExpectWait(Trial& trial, const std::string& what, const std::future<void>& done)
    {
        trial.Expect(done.wait_for(std::chrono::milliseconds(20)) == std::future_status::timeout, what + " to wait",
                     "no wait");
    }

private:
    struct Order
    {
        std::function<void()> work;  // none ends the thread
        std::promise<void> done;
    };

    struct Orders
    {
        std::mutex lock;
        std::condition_variable changed;
        std::queue<Order> queue;
    };

    static Order Take(Orders& orders)
    {
        std::unique_lock guard(orders.lock);
        orders.changed.wait(guard, [&] { return !orders.queue.empty(); });
        auto order = std::move(orders.queue.front());
        orders.queue.pop();
        return order;
    }

    static void Run(Orders& orders)
    {
        for (bool more = true; more;)
        {
            auto order = Take(orders);
            more = order.work != nullptr;
            if (more)
                order.work();
            order.work = nullptr;  // gone with what it holds before anybody hears of its end
            order.done.set_value();
        }
    }

    static constexpr std::chrono::seconds Limit{5};
    static constexpr std::chrono::seconds LastLimit{1};

    std::shared_ptr<Orders> orders_;
    std::thread thread_;
};

}  // namespace tvx::check
