#include "faults/FaultSweep.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "com/ComTest.h"
#include "com/LumidexState.h"
#include "faults/Allocations.h"
#include "faults/Inputs.h"
#include "support/TempFile.h"

namespace test {
namespace {

struct CodeRow {
  HRESULT code;
  const char* name;
};

#define LMD_CODE_ROW(name, value, meaning) CodeRow{name, #name},
constexpr CodeRow kCodes[] = {LMD_RESULT_CODES(LMD_CODE_ROW){S_OK, "S_OK"},
                              {E_POINTER, "E_POINTER"},
                              {E_FAIL, "E_FAIL"},
                              {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
                              {E_UNEXPECTED, "E_UNEXPECTED"}};
#undef LMD_CODE_ROW

const TempFile& GoodFile() {
  static const TempFile file(RichPhoto());
  return file;
}

// The records of an object as bytes.
Bytes RecordsOf(ILumidex& object) {
  IImageInfo* const info = ImageInfoOf(static_cast<CLumidex&>(object));
  if (info == nullptr) return {};
  const CMETADATA_INFO_LIST* const list = info->GetInfoList();
  Bytes bytes;
  for (std::int32_t i = 0; list->m_pRecords != nullptr && i < list->m_nCount; ++i) {
    const CInfoRecord& record = list->m_pRecords[i];
    for (const std::uint32_t field :
         {record.m_nGroup, record.m_nId, record.m_nType, record.m_nSize}) {
      std::ranges::copy(U32(field), std::back_inserter(bytes));
    }
    bytes.insert(bytes.end(), record.m_pData, record.m_pData + record.m_nSize);
  }
  return bytes;
}

const Bytes& GoodRecords() {
  static const Bytes records = [] {
    const Ref<ILumidex> object = NewLumidex();
    EXPECT_EQ(object->Open(GoodFile().Path()), S_OK);
    return RecordsOf(*object.Get());
  }();
  return records;
}

// The number of the next file that is opened: larger than before when one was left open.
int NextDescriptor() {
  std::FILE* const file = _wfopen(GoodFile().Path(), LMD_W("rb"));
  if (file == nullptr) return -1;
  const int descriptor = _fileno(file);
  std::fclose(file);
  return descriptor;
}

// What one disturbed call gave.
struct Outcome {
  HRESULT result = S_OK;
  int calls = 0;
  bool wasMet = false;
};

Outcome RunDisturbed(Scenario& scenario, ILumidex& object, Call kind, int number, bool isLasting) {
  const Fault fault(kind, number, isLasting);
  const HRESULT result = scenario.Run(object);
  return {result, fault.Calls(), fault.WasMet()};
}

Outcome RunOnce(Scenario& scenario, Call kind, int number, bool isLasting) {
  const std::size_t bytes = LiveBytes();
  const std::int32_t objects = m_cObjects;
  const int descriptor = NextDescriptor();
  Outcome outcome;
  {
    const Ref<ILumidex> object = NewLumidex();
    scenario.Prepare(*object.Get());
    outcome = RunDisturbed(scenario, *object.Get(), kind, number, isLasting);
    EXPECT_EQ(NextDescriptor(), descriptor) << "a file is still open";
    scenario.Check(*object.Get(), outcome.result);
    EXPECT_EQ(object->Open(GoodFile().Path()), S_OK);
    EXPECT_TRUE(RecordsOf(*object.Get()) == GoodRecords());
  }
  EXPECT_EQ(m_cObjects, objects);
  EXPECT_EQ(LiveBytes(), bytes);
  return outcome;
}

// Ends with the number that no call has, or with the first failure of the test.
void SweepNumbers(Scenario& scenario, const Operation& operation, Call kind, bool isLasting,
                  int total, std::set<HRESULT>& seen) {
  const auto expected = operation.outcomes.find(kind);
  for (int number = 1; !testing::Test::HasFailure(); ++number) {
    const Outcome outcome = RunOnce(scenario, kind, number, isLasting);
    if (!outcome.wasMet) {
      EXPECT_EQ(number - 1, total);
      EXPECT_EQ(outcome.result, operation.undisturbed);
    } else if (expected == operation.outcomes.end()) {
      ADD_FAILURE() << "such a call is not expected";
    } else {
      EXPECT_TRUE(expected->second.contains(outcome.result)) << CodeName(outcome.result);
      seen.insert(outcome.result);
    }
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << NameOf(kind) << " " << number << (isLasting ? " and all later ones" : "");
    }
    if (!outcome.wasMet) return;
  }
}

// How many calls each operation makes, as a table when all tests are done.
class CallTable final : public testing::Environment {
 public:
  using Row = std::array<int, kCallNames.size()>;

  Row& RowOf(std::string_view operation) {
    for (auto& [name, row] : m_rows) {
      if (name == operation) return row;
    }
    return m_rows.emplace_back(operation, Row()).second;
  }

  void TearDown() override {
    std::printf("%-26s", "calls made to fail");
    for (const std::string_view kind : kCallNames) std::printf(" %10s", kind.data());
    std::printf("\n");
    for (const auto& [name, row] : m_rows) {
      std::printf("%-26s", name.data());
      for (const int count : row) std::printf(" %10d", count);
      std::printf("\n");
    }
  }

 private:
  std::vector<std::pair<std::string_view, Row>> m_rows;
};

CallTable& Table() {
  static auto* const table = new CallTable();
  return *table;
}

const auto* const g_table = testing::AddGlobalTestEnvironment(&Table());

}  // namespace

std::string CodeName(HRESULT result) {
  for (const CodeRow& row : kCodes) {
    if (row.code == result) return row.name;
  }
  return std::to_string(result);
}

std::set<HRESULT> Sweep(const Operation& operation, Call kind) {
  static_cast<void>(GoodRecords());
  std::set<HRESULT> seen;
  const auto scenario = operation.make();
  const Outcome plain = RunOnce(*scenario, kind, 0, false);
  EXPECT_EQ(plain.result, operation.undisturbed) << CodeName(plain.result);
  for (const bool isLasting : {false, true}) {
    SweepNumbers(*scenario, operation, kind, isLasting, plain.calls, seen);
  }
  Table().RowOf(operation.name)[static_cast<std::size_t>(kind)] = plain.calls;
  testing::Test::RecordProperty(std::string(NameOf(kind)), plain.calls);
  return seen;
}

std::vector<const Operation*> Operations() {
  std::vector<const Operation*> all;
  for (const auto part :
       {ObjectOperations(), GetterOperations(), PacketOperations(), WriteOperations()}) {
    for (const Operation& operation : part) all.push_back(&operation);
  }
  return all;
}

}  // namespace test
