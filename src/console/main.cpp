#include "console/run.h"

#include <csignal>

using namespace tonquay;

namespace {

base::Result<std::unique_ptr<console::Host>> makeHost(const console::DiscChoice&)
{
    return base::Failure{base::Failure::Kind::unavailable, {}, "this build was made without a host; it reads no discs"};
}

}

int main(int count, char** arguments)
{
    // A reader of our output that ends early costs its own lines only, not a track that is half written.
    std::signal(SIGPIPE, SIG_IGN);
    console::StandardScreen screen;
    const std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
    return static_cast<int>(console::run(words, screen, makeHost));
}
