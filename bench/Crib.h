#pragma once

#include "admin/SampleCrib.h"
#include "bench/Floor.h"
#include "explorer/frmTree.h"
#include "tests/support/FakeFrame.h"

#include <QTemporaryDir>

/// The crib that everything is measured in: the sample database of one scale, with the explorer before it. The
/// program's session has one copy, the floor another, with the indexes that it needs. 5,000 tools, where there are so
/// many, are put into one more type.
class Crib
{
public:
    /// `cache` keeps the sample databases from one run to the next.
    Crib(const SampleCrib::Scale &scale, const QString &cache);
    /// On a server, as the connection file says; the database is to hold a sample and stays as it is. There is no
    /// floor.
    explicit Crib(const QString &connectionFile);
    ~Crib();
    Q_DISABLE_COPY_MOVE(Crib)

    /// Puts fresh copies in the files' place.
    void renew();

    Floor &floor() { return *m_floor; }
    frmTree &explorer() { return frmTree::instance(); }
    /// Shows a view: 0 types, 1 locations, 2 tools out, 3 scrap. Nothing happens when it is shown already.
    void view(int option);
    /// Clicks on the node of a type; 0 is the root.
    void click(int type);
    /// Lists the type and selects a tool that is in stock.
    void selectToolInStock(int type);

    // Numbers of types
    int drills = 0; ///< of 5,000 tools at the largest scale, with all below it
    int bigType = 0; ///< of 500 tools
    int hugeType = 0; ///< of 5,000
    QString folder() const { return m_folder.path(); }

private:
    void openExplorer();

    QTemporaryDir m_folder;
    QString m_sample;
    std::unique_ptr<Floor> m_floor;
    std::unique_ptr<FakeFrame> m_frame;
};
