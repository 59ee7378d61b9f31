#pragma once

#include "store/AppStore.h"
#include "store/ListModel.h"

/// An archive whose editors can be asked for more cases.
struct CaseRequestChoice {
    QString archive;
    bool taken = false;
    bool underWay = false;

    bool operator==(const CaseRequestChoice &) const = default;
};

/// The archives that the open conversation was asked of, each with the state of the request for
/// more cases.
class CaseRequestModel final : public ListModel<CaseRequestChoice> {
    Q_OBJECT

public:
    enum Role { archive = Qt::UserRole, label, open };

    using ListModel::ListModel;

    void setStore(AppStore *store);

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const CaseRequestChoice &choice) const override { return choice.archive; }
    QVariant value(const CaseRequestChoice &choice, int role) const override;

private:
    void update();

    AppStore *m_store = nullptr;
};
