// Two threads that wait for each other for ever, for the test of the watchdog.
#include <semaphore>
#include <thread>

namespace
{
std::binary_semaphore g_turnOfOne(0);
std::binary_semaphore g_turnOfOther(0);

[[gnu::noinline]] void waitAsOne()
{
    g_turnOfOne.acquire();
    g_turnOfOther.release();
}

[[gnu::noinline]] void waitAsOther()
{
    g_turnOfOther.acquire();
    g_turnOfOne.release();
}
} // namespace

int main()
{
    std::thread other(waitAsOther);
    waitAsOne();
    other.join();
}
