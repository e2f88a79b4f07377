// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <sys/resource.h>

/// Makes a folder one that nobody can write to, for as long as it lives. Root ignores modes:
/// for it the folder becomes read-only.
class ReadOnlyFolder final {
public:
    explicit ReadOnlyFolder(const QString& path);
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
    ~ReadOnlyFolder();

private:
    QByteArray m_path;
    bool m_isMounted{false};
};

/// Lets nobody run a program in a folder, for as long as it lives; only root can have that.
class NoProgramsFolder final {
public:
    explicit NoProgramsFolder(const QString& path);
    NoProgramsFolder(const NoProgramsFolder&) = delete;
    NoProgramsFolder& operator=(const NoProgramsFolder&) = delete;
    ~NoProgramsFolder();

    [[nodiscard]] bool isInPlace() const { return m_isMounted; }

private:
    QByteArray m_path;
    bool m_isMounted{false};
};

/// Makes space short in an empty folder, for as long as it lives: root gets a small disk
/// there, others can't write long files anywhere.
class TightSpace final {
public:
    TightSpace(const QString& path, qint64 bytes) : TightSpace(path, bytes, 0) {}

    /// One that takes only so many files and folders, too; any number if it is 0.
    TightSpace(const QString& path, qint64 bytes, int entries);
    TightSpace(const TightSpace&) = delete;
    TightSpace& operator=(const TightSpace&) = delete;
    ~TightSpace();

    /// Has something else take all of the disk but so many blocks.
    void leaveBlocks(int count) const;

    /// How the system puts it.
    [[nodiscard]] QString complaint() const;

    /// False where only the size of a file could be limited.
    [[nodiscard]] bool isDisk() const { return m_isMounted; }

private:
    QByteArray m_path;
    bool m_isMounted{false};
    rlimit m_before{};
};
