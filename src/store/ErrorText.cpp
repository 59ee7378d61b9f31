#include "store/ErrorText.h"

#include "copy/Copy.h"
#include "platform/CancellationError.h"
#include "platform/FileError.h"
#include "platform/URLError.h"
#include "records/DecodingError.h"
#include "service/ServiceError.h"

namespace {

/// The translated sentence of the key, or the built-in one.
QString translated(const QString &key, AppLanguage language, const QString &builtIn) {
    const auto text = Copy::text(key, language);
    return text == key ? builtIn : text;
}

QString describe(const URLError &error, AppLanguage language) {
    return translated(QLatin1String("urlError.") + URLError::name(error.code()), language,
                      error.localizedDescription());
}

} // namespace

QString ErrorText::describe(std::exception_ptr error, AppLanguage language) {
    try {
        std::rethrow_exception(std::move(error));
    } catch (const ServiceError &failure) {
        return failure.errorDescription();
    } catch (const URLError &failure) {
        return ::describe(failure, language);
    } catch (const FileError &failure) {
        return translated(QLatin1String("fileError.") + FileError::name(failure.code()), language,
                          failure.localizedDescription());
    } catch (const DecodingError &failure) {
        return translated(QStringLiteral("decodingError"), language,
                          failure.localizedDescription());
    } catch (...) {
        return ::describe(URLError(URLError::Code::unknown), language);
    }
}
