#pragma once

#include <QString>

#include <exception>

/// A failure of this machine's file system.
class FileError final : public std::exception {
public:
    enum class Code {
        noSpace,
        tooLarge,
        notPermitted,
        readOnly,
        notFound,
        notAFile,
        deviceFailed,
        unknown,
    };

    explicit FileError(Code code) : m_code(code) {}

    /// The failure that a system call has left in `errno`.
    static FileError ofSystem(int number);

    Code code() const { return m_code; }

    /// The code's name as written above; "fileError." followed by it is the copy key of its text.
    static QString name(Code code);

    /// The English sentence of the code. Our own words: the system's may contain paths.
    QString localizedDescription() const;

    const char *what() const noexcept override { return "FileError"; }

private:
    Code m_code;
};
