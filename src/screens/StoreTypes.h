#pragma once

#include "copy/Words.h"
#include "records/Account.h"
#include "records/Catalogue.h"
#include "store/AppStore.h"

#include <qqml.h>

// The types that QML sees of the layers below, which know nothing of QML.

struct AppStoreForQml {
    Q_GADGET
    QML_FOREIGN(AppStore)
    QML_NAMED_ELEMENT(AppStore)
    QML_UNCREATABLE("there is one, made by the program")
};

struct WordsForQml {
    Q_GADGET
    QML_FOREIGN(Words)
    QML_VALUE_TYPE(words)
};

struct ArchiveForQml {
    Q_GADGET
    QML_FOREIGN(Archive)
    QML_VALUE_TYPE(archive)
};

struct HealthForQml {
    Q_GADGET
    QML_FOREIGN(Health)
    QML_VALUE_TYPE(health)
};

struct CaseCardForQml {
    Q_GADGET
    QML_FOREIGN(CaseCard)
    QML_VALUE_TYPE(caseCard)
};

struct AppUserForQml {
    Q_GADGET
    QML_FOREIGN(AppUser)
    QML_VALUE_TYPE(appUser)
};

struct AccountForQml {
    Q_GADGET
    QML_FOREIGN(Account)
    QML_VALUE_TYPE(account)
};

struct QuotaForQml {
    Q_GADGET
    QML_FOREIGN(Quota)
    QML_VALUE_TYPE(quota)
};
