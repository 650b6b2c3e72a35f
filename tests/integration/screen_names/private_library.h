#pragma once

#include <QWidget>

/// A page from a library that only this application has.
class ReportScreen : public QWidget {
 public:
  explicit ReportScreen(QWidget* parent = nullptr);
};
