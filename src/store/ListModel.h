#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QSet>

#include <algorithm>

/// A list of records for a screen. Replacing the items reports only what differs, row by row, so
/// that views keep their place and redraw nothing else. Rows are told apart by `identity`.
template <class Record>
class ListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    const QList<Record> &items() const { return m_items; }

    int rowCount(const QModelIndex &parent = {}) const final {
        return parent.isValid() ? 0 : static_cast<int>(m_items.size());
    }

    QVariant data(const QModelIndex &index, int role) const final {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        return value(m_items[index.row()], role);
    }

    void setItems(const QList<Record> &items) {
        removeMissing(items);
        const auto present = identities(m_items);
        for (qsizetype at = 0; at < items.size(); ++at)
            place(items[at], at, present);
        // What is left can only be repetitions of identities that the new items have once.
        if (m_items.size() > items.size())
            removeRowsOf(items.size(), m_items.size());
    }

    /// Replaces the list by one that has nothing to do with it: views start over.
    void replaceItems(const QList<Record> &items) {
        beginResetModel();
        m_items = items;
        endResetModel();
    }

    /// Replaces the list by one that has nothing to do with it, as other contents of the same rows:
    /// views show them in what they have made for the rows, and stay where they are.
    void rewriteItems(const QList<Record> &items) {
        const auto before = static_cast<int>(m_items.size());
        const auto after = static_cast<int>(items.size());
        if (after < before) {
            beginRemoveRows({}, after, before - 1);
            m_items = items;
            endRemoveRows();
        } else if (after > before) {
            beginInsertRows({}, before, after - 1);
            m_items = items;
            endInsertRows();
        } else {
            m_items = items;
        }
        if (const auto kept = std::min(before, after); kept > 0)
            Q_EMIT dataChanged(index(0), index(kept - 1));
    }

    /// Adds rows at the end and reports these alone.
    void append(const QList<Record> &items) {
        if (items.isEmpty())
            return;
        const auto first = static_cast<int>(m_items.size());
        beginInsertRows({}, first, first + static_cast<int>(items.size()) - 1);
        m_items.append(items);
        endInsertRows();
    }

    /// Replaces the record of one row, of which only these roles differ; none named means all.
    void setItem(qsizetype at, const Record &record, const QList<int> &roles = {}) {
        m_items[at] = record;
        const auto row = index(static_cast<int>(at));
        Q_EMIT dataChanged(row, row, roles);
    }

protected:
    virtual QString identity(const Record &record) const = 0;
    virtual QVariant value(const Record &record, int role) const = 0;

private:
    QSet<QString> identities(const QList<Record> &items) const {
        QSet<QString> result;
        result.reserve(items.size());
        for (const auto &item : items)
            result.insert(identity(item));
        return result;
    }

    void removeRowsOf(qsizetype begin, qsizetype end) {
        beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end - 1));
        m_items.remove(begin, end - begin);
        endRemoveRows();
    }

    void removeMissing(const QList<Record> &items) {
        const auto kept = identities(items);
        for (qsizetype end = m_items.size(); end > 0;) {
            qsizetype begin = end;
            while (begin > 0 && !kept.contains(identity(m_items[begin - 1])))
                --begin;
            if (begin < end)
                removeRowsOf(begin, end);
            end = begin == 0 ? 0 : begin - 1;
        }
    }

    /// Brings the record to its row; the rows before are already as they should be. A record whose
    /// identity was not `present` before is not searched for.
    void place(const Record &record, qsizetype at, const QSet<QString> &present) {
        const auto wanted = identity(record);
        qsizetype from = present.contains(wanted) ? at : m_items.size();
        while (from < m_items.size() && identity(m_items[from]) != wanted)
            ++from;
        const auto row = static_cast<int>(at);
        if (from == m_items.size()) {
            beginInsertRows({}, row, row);
            m_items.insert(at, record);
            endInsertRows();
            return;
        }
        if (from != at) {
            beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, row);
            m_items.move(from, at);
            endMoveRows();
        }
        if (!(m_items[at] == record)) {
            m_items[at] = record;
            Q_EMIT dataChanged(index(row), index(row));
        }
    }

    QList<Record> m_items;
};
