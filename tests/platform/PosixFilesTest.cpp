#include "zelbase/platform/posix/PosixFiles.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using zelbase::detail::FileResultFromErrno;

struct ErrnoRow {
  int error;
  FileResult result;
};

constexpr ErrnoRow kRows[] = {
    {0, FileResult::Ok},
    {ENOENT, FileResult::NotFound},
    {ENOTDIR, FileResult::PathNotFound},
    {EMFILE, FileResult::TooManyOpenFiles},
    {ENFILE, FileResult::TooManyOpenFiles},
    {EACCES, FileResult::AccessDenied},
    {EPERM, FileResult::AccessDenied},
    {EISDIR, FileResult::AccessDenied},
    {ENXIO, FileResult::AccessDenied},
    {ENODEV, FileResult::AccessDenied},
    {ESPIPE, FileResult::AccessDenied},
    {EBADF, FileResult::InvalidHandle},
    {ENOMEM, FileResult::NotEnoughMemory},
    {EROFS, FileResult::WriteProtected},
    {ENOMEDIUM, FileResult::NotReady},
    {ETXTBSY, FileResult::SharingViolation},
    {EBUSY, FileResult::SharingViolation},
    {EAGAIN, FileResult::SharingViolation},
    {ENETDOWN, FileResult::UnexpectedNetwork},
    {ENETRESET, FileResult::UnexpectedNetwork},
    {EPROTO, FileResult::UnexpectedNetwork},
    {ENETUNREACH, FileResult::UnexpectedNetwork},
    {EHOSTUNREACH, FileResult::UnexpectedNetwork},
    {ETIMEDOUT, FileResult::UnexpectedNetwork},
    {ESTALE, FileResult::NetworkNameDeleted},
    {ENOTCONN, FileResult::NetworkNameDeleted},
    {ECONNRESET, FileResult::NetworkNameDeleted},
    {ECONNABORTED, FileResult::NetworkNameDeleted},
    {EHOSTDOWN, FileResult::NetworkNameDeleted},
    {ESHUTDOWN, FileResult::NetworkNameDeleted},
    {EEXIST, FileResult::FileExists},
    {EINVAL, FileResult::InvalidParameter},
    {EFAULT, FileResult::InvalidParameter},
    {EOVERFLOW, FileResult::InvalidParameter},
    {ENOSPC, FileResult::DiskFull},
    {EDQUOT, FileResult::DiskFull},
    {EFBIG, FileResult::DiskFull},
    {ENAMETOOLONG, FileResult::InvalidName},
    {EILSEQ, FileResult::InvalidName},
    {ELOOP, FileResult::InvalidName},
    {EIO, FileResult::IoFailed},
};

TEST(PosixFiles, ErrorNumbersBecomeTheInterfaces) {
  for (const ErrnoRow& row : kRows) EXPECT_EQ(FileResultFromErrno(row.error), row.result) << row.error;
}

TEST(PosixFiles, NumbersWithoutACounterpartAreIoFailed) {
  for (const int error : {ECHILD, EDOM, 99999, -1}) EXPECT_EQ(FileResultFromErrno(error), FileResult::IoFailed) << error;
}

}  // namespace
