#include "ui/forms/popup_menu_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTest>

namespace tonquay::ui {
namespace {

struct Popup : testing::Test {
    state::PopaControls popa;
    int closings = 0;
    PopupMenuView view{popa};

    Popup()
    {
        popa.form.onLoad = [this] { popa.popopt.opened.tell(); };
        popa.popopt.closed = [this] {
            ++closings;
            popa.form.unload();
        };
    }

    static QMenu* open()
    {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        while (menu != nullptr && qobject_cast<QMenu*>(menu->parentWidget()) != nullptr)
            menu = static_cast<QMenu*>(menu->parentWidget());
        return menu;
    }

    static QAction* find(const QMenu* menu, const QString& caption)
    {
        for (QAction* action : menu->actions()) {
            if (action->text().remove('&') == caption)
                return action;
            if (QAction* below = action->menu() != nullptr ? find(action->menu(), caption) : nullptr)
                return below;
        }
        return nullptr;
    }
};

TEST_F(Popup, showsItsLinesAndCarriesOutAChoiceOnceItHasClosed)
{
    int chosen = 0;
    popa.pop[state::centerEntry].click = [&] {
        ++chosen;
        EXPECT_EQ(closings, 1);
        EXPECT_FALSE(popa.form.isLoaded());
    };
    popa.pop[state::setupEntry].enabled = false;
    popa.form.show();
    ASSERT_NE(open(), nullptr);
    EXPECT_FALSE(find(open(), "CD Ripper Setup")->isEnabled());
    QAction* const centre = find(open(), "Center CD Ripper");
    ASSERT_NE(centre, nullptr);
    QMenu* const menu = open();
    centre->trigger();
    menu->close();
    QTest::qWait(20);
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(open(), nullptr);
}

TEST_F(Popup, keysOfItsLinesAreOneEach)
{
    popa.form.show();
    int lines = 0;
    int withKeys = 0;
    std::function<void(const QMenu*)> check = [&](const QMenu* menu) {
        std::set<QString> keys;
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            const QString text = action->text();
            const auto at = text.indexOf('&');
            ++lines;
            if (at >= 0) {
                EXPECT_TRUE(keys.insert(text.mid(at + 1, 1).toLower()).second) << text.toStdString();
                ++withKeys;
            }
            if (action->menu() != nullptr)
                check(action->menu());
        }
    };
    check(open());
    EXPECT_GE(withKeys, lines - 1) << "one may find all its letters taken";
    open()->close();
}

TEST_F(Popup, opensAnewInTheMiddleOfItsOwnChoice)
{
    popa.pop[state::encodeEntry].click = [this] {
        popa.form.show();
        QTest::qWait(20);
        open()->close();
        QTest::qWait(20);
    };
    popa.form.show();
    QMenu* const first = open();
    find(first, "Encode (WAV to MP3) Selected Track(s)")->trigger();
    first->close();
    QTest::qWait(80);
    EXPECT_EQ(closings, 2);
    EXPECT_FALSE(popa.form.isLoaded());

    popa.form.show();
    popa.form.unload();
    popa.form.show();
    QTest::qWait(20);
    ASSERT_NE(open(), nullptr) << "the first one gave way to the second";
    open()->close();
    QTest::qWait(20);
    EXPECT_EQ(closings, 3);
}

}
}
