#include "ui/ripdeck/ripdeck.h"
#include "ui/skin/skin.h"

#include <QApplication>

#include <csignal>
#include <cstdio>

using namespace tonquay;

int main(int count, char** words)
{
    // A reader of our output that ends early costs its own lines only.
    std::signal(SIGPIPE, SIG_IGN);
    // Whoever started us may have had children's ends ignored; then no encoder's end would reach us.
    std::signal(SIGCHLD, SIG_DFL);
    // The whole command line is the program folder, so there is nothing in it for the toolkit to take.
    int own = 1;
    QApplication application(own, words);
    ui::dressApplication(application);
    std::string commandLine;
    for (int i = 1; i < count; ++i)
        commandLine += (i > 1 ? " " : "") + std::string(words[i]);
    ui::Ripdeck ripdeck;
    if (const base::Status started = ripdeck.start(commandLine); !started) {
        std::fprintf(stderr, "ripdeck: %s\n", base::describe(started.failure()).c_str());
        return 2;
    }
    return QApplication::exec();
}
