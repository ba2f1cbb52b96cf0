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

    static bool typeNames(QFileDialog& dialog, const QString& names) {
        auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        edit->setText(names);
        QMetaObject::invokeMethod(&dialog, "accept"); // what Return in the line does
        return true;
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(FileDialogTest, GivesTheFolderAndTheNamesOfWhatWasChosen) {
    const struct {
        const char* typed;
        std::vector<std::string> names;
    } cases[] = {
        {"a.ogv", {"a.ogv"}},
        {"\"a.ogv\" \"c d.ogv\" \"B.OGG\"", {"a.ogv", "c d.ogv", "B.OGG"}},
        {"\u00e9.ogg", {"\u00e9.ogg"}},
    };
    static_cast<void>(test::gui());
    for (const auto& c : cases) {
        QString title;
        whenOpen([&](QFileDialog& dialog) {
            title = dialog.windowTitle();
            return typeNames(dialog, QString::fromUtf8(c.typed));
        });
        const auto result = test::gui().fileDialog().openFiles(request());
        ASSERT_TRUE(result.has_value()) << c.typed;
        EXPECT_EQ(title, QString("Add Video"));
        EXPECT_EQ(result->folder, m_folder.path().toStdString() + "/");
        EXPECT_EQ(result->names, c.names);
    }
}

TEST_F(FileDialogTest, GivesNothingWhenCancelled) {
    static_cast<void>(test::gui());
    whenOpen([](QFileDialog& dialog) {
        dialog.reject();
        return true;
    });
    EXPECT_EQ(test::gui().fileDialog().openFiles(request()), std::nullopt);
}

TEST_F(FileDialogTest, StartsInTheFolderAndShowsFilesByPatternWithoutCase) {
    static_cast<void>(test::gui());
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

TEST_F(FileDialogTest, KeepsInputFromItsOwner) {
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
