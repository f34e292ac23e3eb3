#pragma once

#include "platform/qt/PropertySheet.h"
#include "store/services/MemberSearchData.h"
#include "ui/FormFields.h"

/// A page that describes the members to look for. It adds criteria to a search and takes none away:
/// what was set when the page was left stays, also when its field is emptied afterwards.
class CSearchPg : public CPropertyPage
{
    Q_OBJECT
protected:
    using search = CMemberSearchData::search;

    /// The search must live longer.
    CSearchPg(CMemberSearchData& searchData, QWidget* parent)
        : CPropertyPage(parent)
        , m_search(searchData)
    {
    }

    /// The buttons set a criterion to 1 and to 0, as soon as they are clicked.
    void AddPair(QRadioButton& whenTrue, QRadioButton& whenFalse, search criterion);
    void ShowFields() override { m_fields.Show(); }

    CMemberSearchData& m_search;
    CFormFields m_fields;
};
