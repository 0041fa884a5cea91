// PDF files read back with poppler's pdftotext: each word, its page and where it stands on
// it, in points from the page's top left corner.
#pragma once

#include <algorithm>
#include <vector>

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QString>

#include <gtest/gtest.h>

namespace titron::qt::testing {

struct Word {
    QString text;
    int page; // from 1
    double left, right, top, bottom;
};

struct Pdf {
    int pages = 0;
    double width = 0, height = 0; // of the last page
    std::vector<Word> words;
};

inline Pdf readPdf(const QString& path) {
    Pdf pdf;
    if (QStandardPaths::findExecutable("pdftotext").isEmpty()) {
        ADD_FAILURE() << "pdftotext is missing: install poppler-utils";
    }
    QProcess tool;
    tool.start("pdftotext", {"-bbox", path, "-"});
    tool.waitForFinished();
    static const QRegularExpression element(
        R"re(<page width="([\d.]+)" height="([\d.]+)"|)re"
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)<)re");
    for (const auto& m : element.globalMatch(QString::fromUtf8(tool.readAllStandardOutput()))) {
        if (m.hasCaptured(1)) {
            ++pdf.pages;
            pdf.width = m.captured(1).toDouble();
            pdf.height = m.captured(2).toDouble();
        } else {
            pdf.words.push_back({m.captured(7), pdf.pages, m.captured(3).toDouble(),
                                 m.captured(5).toDouble(), m.captured(4).toDouble(),
                                 m.captured(6).toDouble()});
        }
    }
    return pdf;
}

inline bool has(const Pdf& pdf, const QString& text) {
    return std::any_of(pdf.words.begin(), pdf.words.end(),
                       [&text](const Word& w) { return w.text == text; });
}

inline Word find(const Pdf& pdf, const QString& text) {
    for (const Word& w : pdf.words) {
        if (w.text == text) {
            return w;
        }
    }
    ADD_FAILURE() << "no word " << text.toStdString();
    return {};
}

} // namespace titron::qt::testing
