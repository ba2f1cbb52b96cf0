// The file dialog, driven through the keyboard as a person would.
#include <QAbstractItemModel>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>
#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/TempFolder.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

namespace {

class FileDialogTest : public support::TempFolderTest {
protected:
    FileDialogTest() {
        for (const char* name : {"a.ogv", "B.OGG", "note.txt", "c d.ogv", "\u00e9.ogg"}) {
            support::writeBytes(name, "");
        }
        m_asked.title = "Add Video";
        m_asked.filterName = "Theora Video Files";
        m_asked.filterPatterns = "*.ogg;*.ogv";
        m_asked.initialFolder = m_folder.path();
    }

    /// Runs `drive` on the open dialog until it answers true.
    template <typename Drive>
    static void whenOpen(Drive drive) {
        test::gui().loop().post([drive] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible() || !drive(*dialog)) {
                whenOpen(drive);
            }
        });
    }

    platform::OpenFilesRequest m_asked;
};

} // namespace

TEST_F(FileDialogTest, GivesTheFolderAndTheNamesOfWhatWasChosen) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"a.ogv", {"a.ogv"}},
        {"\"a.ogv\" \"c d.ogv\" \"B.OGG\"", {"a.ogv", "c d.ogv", "B.OGG"}},
        {"\u00e9.ogg", {"\u00e9.ogg"}},
    };
    for (const auto& [typed, names] : cases) {
        whenOpen([typed = typed](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QString("Add Video"));
            dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromUtf8(typed));
            QMetaObject::invokeMethod(&dialog, "accept"); // what Return in the line does
            return true;
        });
        const auto result = test::gui().fileDialog().openFiles(m_asked);
        ASSERT_TRUE(result.has_value()) << typed;
        EXPECT_EQ(result->folder, m_folder.path());
        EXPECT_EQ(result->names, names);
    }
}

TEST_F(FileDialogTest, SpeaksTheLanguageOfTheWindowsWhileItIsOpen) {
    for (const auto& [language, word] : {std::pair("de", "Abbrechen"), std::pair("fr", "Annuler"),
                                         std::pair("", "Cancel"), std::pair("../de", "Cancel")}) {
        m_asked.language = language;
        whenOpen([word = word](QFileDialog& dialog) {
            const auto* buttons = dialog.findChild<QDialogButtonBox*>();
            QString shown = buttons->button(QDialogButtonBox::Cancel)->text();
            EXPECT_EQ(shown.remove(u'&'), QString(word));
            dialog.reject();
            return true;
        });
        EXPECT_EQ(test::gui().fileDialog().openFiles(m_asked), std::nullopt);
    }
}

TEST_F(FileDialogTest, StartsInTheFolderAndShowsFilesByPatternWithoutCase) {
    std::replace(m_asked.initialFolder.begin() + 1, m_asked.initialFolder.end(), '/', '\\');
    QStringList shown;
    whenOpen([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString() + "/", m_folder.path());
        const auto* view = dialog.findChild<QTreeView*>("treeView");
        const QModelIndex top = view->rootIndex();
        shown.clear();
        for (int row = 0; row < view->model()->rowCount(top); ++row) {
            shown << view->model()->index(row, 0, top).data().toString();
        }
        if (shown.size() < 4) { // the model is still reading the folder
            return false;
        }
        dialog.reject();
        return true;
    });
    EXPECT_EQ(test::gui().fileDialog().openFiles(m_asked), std::nullopt);
    shown.sort();
    EXPECT_EQ(shown, (QStringList{"B.OGG", "a.ogv", "c d.ogv", "\u00e9.ogg"}));
}

TEST_F(FileDialogTest, HasTheKeyboardAgainAfterItsMessageBox) {
    bool asked = false;
    bool answered = false;
    whenOpen([&](QFileDialog& dialog) {
        // Runs inside the box's own loop as well.
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText("missing.ogv");
        test::gui().loop().post([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            asked = box != nullptr;
            if (asked) {
                box->accept();
            }
        });
        QMetaObject::invokeMethod(&dialog, "accept");
        test::pump();
        answered = QApplication::activeWindow() == &dialog;
        dialog.reject();
        return true;
    });
    EXPECT_EQ(test::gui().fileDialog().openFiles(m_asked), std::nullopt);
    EXPECT_TRUE(asked);
    EXPECT_TRUE(answered);
}

TEST_F(FileDialogTest, KeepsInputFromItsOwnerUntilItIsCancelled) {
    test::TestWindow owner;
    owner.show();
    m_asked.owner = &owner.native();
    whenOpen([&](QFileDialog& dialog) {
        test::click(owner.native(), {5, 5});
        dialog.reject();
        return true;
    });
    EXPECT_EQ(test::gui().fileDialog().openFiles(m_asked), std::nullopt);
    EXPECT_TRUE(owner.takeEvents().empty());
    owner.unnoted.erase(platform::EventKind::activated);
    test::pump();
    EXPECT_EQ(owner.takeEvents(), std::vector<std::string>{"activated"});
}
