// The file dialog, driven through the keyboard as a person would.
#include <QAbstractItemModel>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeView>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::OpenFilesRequest;

namespace {

class FileDialogTest : public testing::Test {
protected:
    void SetUp() override {
        static_cast<void>(test::gui());
        ASSERT_TRUE(m_folder.isValid());
        for (const char* name : {"a.ogv", "B.OGG", "note.txt", "c d.ogv", "\u00e9.ogg"}) {
            QFile file(m_folder.filePath(QString::fromUtf8(name)));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }

    [[nodiscard]] OpenFilesRequest request() const {
        OpenFilesRequest result;
        result.title = "Add Video";
        result.filterName = "Theora Video Files";
        result.filterPatterns = "*.ogg;*.ogv";
        result.initialFolder = m_folder.path().toStdString();
        return result;
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

    QTemporaryDir m_folder;
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
        const auto result = test::gui().fileDialog().openFiles(request());
        ASSERT_TRUE(result.has_value()) << typed;
        EXPECT_EQ(result->folder, m_folder.path().toStdString() + "/");
        EXPECT_EQ(result->names, names);
    }
}

TEST_F(FileDialogTest, StartsInTheFolderAndShowsFilesByPatternWithoutCase) {
    OpenFilesRequest asked = request();
    std::replace(asked.initialFolder.begin() + 1, asked.initialFolder.end(), '/', '\\');
    QStringList shown;
    whenOpen([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), m_folder.path());
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
    EXPECT_EQ(test::gui().fileDialog().openFiles(asked), std::nullopt);
    shown.sort();
    EXPECT_EQ(shown, (QStringList{"B.OGG", "a.ogv", "c d.ogv", "\u00e9.ogg"}));
}

TEST_F(FileDialogTest, KeepsInputFromItsOwnerAndGivesNothingWhenCancelled) {
    test::TestWindow owner;
    owner.show();
    OpenFilesRequest asked = request();
    asked.owner = &owner.native();
    whenOpen([&](QFileDialog& dialog) {
        test::click(owner.native(), {5, 5});
        dialog.reject();
        return true;
    });
    EXPECT_EQ(test::gui().fileDialog().openFiles(asked), std::nullopt);
    EXPECT_TRUE(owner.takeEvents().empty());
}
