#pragma once
// dlgMass, "Change Mass/Capacity": the mass and capacity given to every selected freight
// car.

#include <QDialog>
#include <string>

class QLineEdit;

namespace ferrolund::app {
struct AppContext;
}

namespace ferrolund::screens {

class dlgMass : public QDialog {
    Q_OBJECT
public:
    explicit dlgMass(app::AppContext& ctx, QWidget* parent = nullptr);
    std::string mass() const;
    std::string capacity() const;
    QLineEdit* massBox() const { return mass_; }
    QLineEdit* capacityBox() const { return capacity_; }

private:
    void accept() override;
    app::AppContext& ctx_;
    QLineEdit* mass_ = nullptr;
    QLineEdit* capacity_ = nullptr;
};

}  // namespace ferrolund::screens
