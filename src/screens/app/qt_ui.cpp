#include "screens/app/qt_ui.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QProgressBar>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

namespace {

QMessageBox::Icon QtIcon(base::Icon icon) {
    switch (icon) {
        case base::Icon::Information: return QMessageBox::Information;
        case base::Icon::Exclamation: return QMessageBox::Warning;
        case base::Icon::Critical: return QMessageBox::Critical;
        case base::Icon::Question: return QMessageBox::Question;
        case base::Icon::None: break;
    }
    return QMessageBox::NoIcon;
}

QString Title(const std::string& title) { return ToQt(title.empty() ? std::string(base::kProgramTitle) : title); }

}  // namespace

void QtUi::message(const std::string& text, base::Icon icon, const std::string& title) {
    QMessageBox box(QtIcon(icon), Title(title), ToQt(text), QMessageBox::Ok, parent_);
    box.exec();
}

base::Answer QtUi::ask(const std::string& text, base::Buttons buttons, base::Icon icon, const std::string& title) {
    QMessageBox::StandardButtons qtButtons = QMessageBox::Ok;
    switch (buttons) {
        case base::Buttons::Ok: qtButtons = QMessageBox::Ok; break;
        case base::Buttons::OkCancel: qtButtons = QMessageBox::Ok | QMessageBox::Cancel; break;
        case base::Buttons::YesNo: qtButtons = QMessageBox::Yes | QMessageBox::No; break;
        case base::Buttons::YesNoCancel: qtButtons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel; break;
        case base::Buttons::RetryCancel: qtButtons = QMessageBox::Retry | QMessageBox::Cancel; break;
    }
    QMessageBox box(QtIcon(icon), Title(title), ToQt(text), qtButtons, parent_);
    switch (box.exec()) {
        case QMessageBox::Yes: return base::Answer::Yes;
        case QMessageBox::No: return base::Answer::No;
        case QMessageBox::Ok: return base::Answer::Ok;
        case QMessageBox::Retry: return base::Answer::Retry;
        default: return base::Answer::Cancel;
    }
}

std::optional<std::string> QtUi::input(const std::string& title, const std::string& prompt,
                                       const std::string& defaultText) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(parent_, Title(title), ToQt(prompt), QLineEdit::Normal, ToQt(defaultText), &ok);
    if (!ok) return std::nullopt;
    return FromQt(text);
}

std::optional<std::string> QtUi::chooseOpenFile(const std::string& title, const std::string& filter,
                                                const std::string& startFolder) {
    const QString file = QFileDialog::getOpenFileName(parent_, ToQt(title), DiskPathToQt(startFolder), QtFilter(filter));
    if (file.isEmpty()) return std::nullopt;
    return SystemPathFromQt(file);
}

std::optional<std::string> QtUi::chooseSaveFile(const std::string& title, const std::string& filter,
                                                const std::string& startFolder) {
    const QString file = QFileDialog::getSaveFileName(parent_, ToQt(title), DiskPathToQt(startFolder), QtFilter(filter));
    if (file.isEmpty()) return std::nullopt;
    return SystemPathFromQt(file);
}

std::optional<std::string> QtUi::chooseFolder(const std::string& title, const std::string& startFolder) {
    const QString folder = QFileDialog::getExistingDirectory(parent_, ToQt(title), DiskPathToQt(startFolder));
    if (folder.isEmpty()) return std::nullopt;
    return SystemPathFromQt(folder);
}

void QtUi::progress(int percent, const std::string& caption) {
    if (!progressBar) return;
    progressBar->setVisible(percent >= 0 && percent < 100);
    progressBar->setValue(percent);
    progressBar->setFormat(ToQt(caption) + (caption.empty() ? "" : " ") + "%p%");
}

void QtUi::status(int panel, const std::string& text) {
    if (showStatus) showStatus(panel, ToQt(text));
}

void QtUi::busy(bool on) {
    if (on) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (QApplication::overrideCursor()) {
        QApplication::restoreOverrideCursor();
    }
}

void QtUi::pump() { QCoreApplication::processEvents(); }

}  // namespace ferrolund::screens
