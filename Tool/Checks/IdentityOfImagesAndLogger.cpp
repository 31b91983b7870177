// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectPromises.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

constexpr Check ImageChecks[] = {
    AnswersItsList<ImageFactoryClass>(
        "identity-image-factory-answers-its-interfaces",
        "The image factory answers IImageFactory, IObject and IObjectBase with one face, and refuses all else."),
    AnswersItsList<ImageClass>("identity-image-answers-its-interfaces",
                               "An image answers IImage, IImageBase, IObject and IObjectBase with one face. It refuses "
                               "IConstImage, which says that an image never changes."),
    AnswersItsList<ConstImageClass>("identity-const-image-answers-its-interfaces",
                                    "An image that never changes answers IConstImage, IImageBase, IObject and "
                                    "IObjectBase with one face, and refuses IImage and all else."),
    RefuseNearMisses<ImageOffer>("identity-images-refuse-near-misses"),
    IsSharedByModuleAndAsker<ImageOffer>("identity-image-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<ImageOffer>("identity-images-are-made-with-one-reference"),
    CountTheirReferences<ImageOffer>("identity-images-count-their-references"),
    AreNewEachTime<ImageOffer>("identity-images-are-new-each-time"),
    BelongToTheirThread<ImageOffer>("identity-images-belong-to-their-thread"),
    TellTheirEnd<ImageOffer>("identity-images-tell-their-end"),
    TellTheirEndToEachSubscription<ImageOffer>("identity-images-tell-their-end-to-each-subscription"),
};

constexpr Check LoggerChecks[] = {
    AnswersItsList<LoggerClass>("identity-logger-answers-its-interfaces",
                                "The logger answers ILogger, IObject and IObjectBase with its primary face, "
                                "IConfigurable and IImportsContainer with one more each, and refuses all else."),
    AnswersItsList<LogRecordClass>(
        "identity-log-record-answers-its-interfaces",
        "A log record answers ILogData, IObject and IObjectBase with one face, and refuses all else."),
    RefuseNearMisses<LoggerOffer>("identity-log-records-refuse-near-misses"),
    IsSharedByModuleAndAsker<LoggerOffer>("identity-logger-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<LoggerOffer>("identity-log-records-are-their-keepers-alone"),
    CountTheirReferences<LoggerOffer>("identity-log-records-count-their-references"),
    AreNewEachTime<LoggerOffer>("identity-log-records-are-new-each-time"),
    BelongToTheirThread<LoggerOffer>("identity-log-records-belong-to-their-thread"),
    TellTheirEnd<LoggerOffer>("identity-log-records-tell-their-end"),
    TellTheirEndToEachSubscription<LoggerOffer>("identity-log-records-tell-their-end-to-each-subscription"),
};

}  // namespace

extern const Family IdentityOfImageFamily = {"identity", ImageExport, Needs::Module, ImageChecks};
extern const Family IdentityOfLoggerFamily = {"identity", LoggerExport, Needs::Module, LoggerChecks};

}  // namespace tvx::check
