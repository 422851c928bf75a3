#include "device/cable/AfcClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <map>
#include <utility>

namespace tavrix {
namespace {

/// The names of about a million files.
constexpr std::uint64_t largestBody = 64 * 1024 * 1024;
constexpr std::uint64_t largestStatus = 4096;
constexpr std::size_t pieceBytes = 64 * 1024;

[[noreturn]] void throwGone() { throw PhoneError{PhoneError::Kind::gone}; }

/// Returns the system's error code for an error of the phone; 0 for success.
int codeOf(AfcStatus status) {
  switch (status) {
    case AfcStatus::success:
      return 0;
    case AfcStatus::notFound:
      return ENOENT;
    case AfcStatus::denied:
      return EACCES;
    case AfcStatus::isFolder:
      return EISDIR;
    case AfcStatus::invalidArgument:
      return EINVAL;
    case AfcStatus::notSupported:
      return EOPNOTSUPP;
    case AfcStatus::noResources:
      return EMFILE;
    case AfcStatus::unknownError:
    case AfcStatus::readError:
    case AfcStatus::ioError:
    case AfcStatus::internalError:
    case AfcStatus::busy:
      return EIO;
  }
  throwGone();
}

void receive(ServiceStream& stream, std::span<char> buffer) {
  if (!buffer.empty() && !stream.receive(buffer)) throwGone();
}

AfcHead receiveHead(ServiceStream& stream, std::uint64_t number) {
  std::array<char, AfcHead::bytes> bytes{};
  receive(stream, bytes);
  const auto head = AfcHead::decode(bytes);
  if (!head || head->number != number) throwGone();
  return *head;
}

AfcStatus receiveStatus(ServiceStream& stream, std::uint64_t length) {
  if (length > largestStatus) throwGone();
  std::string body(static_cast<std::size_t>(length), '\0');
  receive(stream, body);
  const auto status = AfcBody::numberAt(body, 0);
  if (!status) throwGone();
  return static_cast<AfcStatus>(*status);
}

std::string pathParameter(FileOperation purpose, const std::string& path) {
  // The phone would take the part before the zero byte as the path.
  if (path.find('\0') != std::string::npos) throw FileError{purpose, path, EINVAL};
  return AfcBody::ofText(path);
}

std::int64_t numberOf(std::string_view text) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

Instant instantOf(std::int64_t nanoseconds) {
  return std::chrono::floor<std::chrono::milliseconds>(
      std::chrono::sys_time<std::chrono::nanoseconds>{std::chrono::nanoseconds{nanoseconds}});
}

FileStatus::Type typeOf(std::string_view text) {
  if (text == "S_IFREG") return FileStatus::Type::file;
  if (text == "S_IFDIR") return FileStatus::Type::folder;
  return text == "S_IFLNK" ? FileStatus::Type::link : FileStatus::Type::other;
}

FileStatus statusOf(const std::map<std::string_view, std::string_view>& fields) {
  const auto field = [&](std::string_view name) {
    const auto found = fields.find(name);
    return found == fields.end() ? std::string_view{} : found->second;
  };
  FileStatus status;
  status.type = typeOf(field("st_ifmt"));
  status.size = static_cast<std::uint64_t>(std::max<std::int64_t>(0, numberOf(field("st_size"))));
  const std::int64_t created = numberOf(field("st_birthtime"));
  status.modified = instantOf(created > 0 ? created : numberOf(field("st_mtime")));
  return status;
}

/// Returns the fields of a file by name, from names and values in turn. Returns nullopt if a name
/// has no value.
std::optional<std::map<std::string_view, std::string_view>> fieldsIn(std::string_view body) {
  const auto texts = AfcBody::textsIn(body);
  if (!texts || texts->size() % 2 != 0) return std::nullopt;
  std::map<std::string_view, std::string_view> fields;
  for (std::size_t i = 0; i < texts->size(); i += 2) fields[(*texts)[i]] = (*texts)[i + 1];
  return fields;
}

}  // namespace

void AfcClient::exchange(const Request& request, const BodyReceiver& receiveBody) {
  // Put back only after a valid answer.
  auto stream = std::exchange(stream_, nullptr);
  if (stream == nullptr) throwGone();
  const AfcHead head{request.operation, ++lastNumber_, request.parameters.size(),
                     request.parameters.size()};
  if (!stream->send(head.encode() + request.parameters)) throwGone();
  const AfcHead answer = receiveHead(*stream, head.number);
  int refusal = 0;
  if (answer.operation == AfcOperation::status) {
    refusal = codeOf(receiveStatus(*stream, answer.bodyLength));
    if (refusal == 0 && request.answer != AfcOperation::status) throwGone();
  } else {
    if (answer.operation != request.answer) throwGone();
    receiveBody(*stream, answer.bodyLength);
  }
  stream_ = std::move(stream);
  if (refusal != 0) throw FileError{request.purpose, request.path, refusal};
}

std::string AfcClient::bodyOf(const Request& request) {
  std::string body;
  exchange(request, [&](ServiceStream& stream, std::uint64_t length) {
    if (length > largestBody) throwGone();
    // Grows with the bytes that arrive, because the phone may announce more.
    while (body.size() < length) {
      const std::size_t begin = body.size();
      body.resize(std::min(static_cast<std::size_t>(length), begin + pieceBytes));
      receive(stream, std::span{body}.subspan(begin));
    }
  });
  return body;
}

template <typename Value>
Value AfcClient::required(std::optional<Value> value) {
  if (value) return *std::move(value);
  stream_.reset();
  throwGone();
}

std::vector<std::string> AfcClient::names(const std::string& folder) {
  constexpr FileOperation purpose = FileOperation::list;
  const std::string body = bodyOf({AfcOperation::readFolder, pathParameter(purpose, folder),
                                   AfcOperation::data, purpose, folder});
  std::vector<std::string> names;
  for (const std::string_view text : required(AfcBody::textsIn(body))) {
    const bool isPart = text.find('/') == std::string_view::npos && !text.empty();
    if (isPart && text != "." && text != "..") names.emplace_back(text);
  }
  std::sort(names.begin(), names.end());
  return names;
}

FileStatus AfcClient::status(const std::string& path) {
  constexpr FileOperation purpose = FileOperation::status;
  const std::string body = bodyOf(
      {AfcOperation::fileInfo, pathParameter(purpose, path), AfcOperation::data, purpose, path});
  return statusOf(required(fieldsIn(body)));
}

AfcClient::OpenFile AfcClient::open(const std::string& path) {
  constexpr FileOperation purpose = FileOperation::open;
  const std::string body =
      bodyOf({AfcOperation::openFile, AfcBody::ofNumber(afcReadOnly) + pathParameter(purpose, path),
              AfcOperation::openedFile, purpose, path});
  return {required(AfcBody::numberAt(body, 0)), path};
}

std::size_t AfcClient::read(const OpenFile& file, std::span<char> buffer) {
  std::size_t count = 0;
  exchange(
      {AfcOperation::readFile, AfcBody::ofNumber(file.handle) + AfcBody::ofNumber(buffer.size()),
       AfcOperation::data, FileOperation::read, file.path},
      [&](ServiceStream& stream, std::uint64_t length) {
        if (length > buffer.size()) throwGone();
        count = static_cast<std::size_t>(length);
        receive(stream, buffer.first(count));
      });
  return count;
}

void AfcClient::seek(const OpenFile& file, std::uint64_t offset) {
  exchange(
      {AfcOperation::seekFile,
       AfcBody::ofNumber(file.handle) + AfcBody::ofNumber(afcFromBegin) + AfcBody::ofNumber(offset),
       AfcOperation::status, FileOperation::read, file.path},
      {});
}

void AfcClient::close(const OpenFile& file) {
  exchange({AfcOperation::closeFile, AfcBody::ofNumber(file.handle), AfcOperation::status,
            FileOperation::read, file.path},
           {});
}

}  // namespace tavrix
