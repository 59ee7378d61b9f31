#include "platform/FileError.h"

#include <cerrno>

namespace {

using Code = FileError::Code;

struct Words {
    const char *name;
    const char16_t *sentence;
};

Words words(Code code) {
    switch (code) {
    case Code::noSpace:
        return {"noSpace", u"The disk is full; free some space and try again."};
    case Code::tooLarge:
        return {"tooLarge", u"The file would become larger than this computer allows."};
    case Code::notPermitted:
        return {"notPermitted",
                u"This program is not allowed to use the file; check who owns it and its folder."};
    case Code::readOnly:
        return {"readOnly",
                u"The disk can only be read at present; make it writable and try again."};
    case Code::notFound:
        return {"notFound", u"The file or its folder is missing."};
    case Code::notAFile:
        return {"notAFile",
                u"Something else is in the place of the file; move it away and try again."};
    case Code::deviceFailed:
        return {"deviceFailed", u"The disk reported a fault; check it and try again."};
    case Code::unknown:
        return {"unknown", u"The file could not be used for an unknown reason; please try again."};
    }
    return words(Code::unknown);
}

Code codeOf(int number) {
    switch (number) {
    case ENOSPC:
    case EDQUOT:
        return Code::noSpace;
    case EFBIG:
    case EOVERFLOW:
        return Code::tooLarge;
    case EACCES:
    case EPERM:
        return Code::notPermitted;
    case EROFS:
        return Code::readOnly;
    case ENOENT:
    case ENOTDIR:
        return Code::notFound;
    case EISDIR:
    case EEXIST:
    case ELOOP:
    case ENXIO:
        return Code::notAFile;
    case EIO:
        return Code::deviceFailed;
    default:
        return Code::unknown;
    }
}

} // namespace

FileError FileError::ofSystem(int number) {
    return FileError(codeOf(number));
}

QString FileError::name(Code code) {
    return QString::fromLatin1(words(code).name);
}

QString FileError::localizedDescription() const {
    return QString::fromUtf16(words(m_code).sentence);
}
