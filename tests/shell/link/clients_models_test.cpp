#include "shell/link/clients_models.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <random>
#include <string>
#include <vector>

#include "link/roster.h"

namespace kestrel::shell {
namespace {

void Add(link::Tables& tables, int id, const std::string& name = "Pilot") {
  AddAWASCClient(std::to_string(id) + "\x1e" + name + "\x1e\x1eO", true, tables);
}

std::vector<std::string> Expected(const link::Tables& tables) {
  std::vector<std::string> texts;
  for (const link::PlotRecord& client : tables.Clients.Live()) {
    texts.push_back(std::to_string(client.Id) + client.Name + client.Status);
  }
  return texts;
}

std::vector<std::string> ShownRows(const ClientsModel& model) {
  std::vector<std::string> texts;
  for (int row = 0; row < model.rowCount(); ++row) {
    const ClientRow& shown = model.At(model.index(row));
    texts.push_back(std::to_string(shown.Id) + shown.Name + shown.Status);
  }
  return texts;
}

TEST(ClientsModel, LooksAtNoMoreThanHasBeenTouched) {
  link::Tables tables;
  for (int id = 1; id <= 9; ++id) Add(tables, id);
  ClientsModel model;
  model.Load(tables);
  for (link::PlotRecord& client : tables.Clients.Live()) client.Name = "not told";
  QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  DelAWACSClient("4", tables);
  UpdateClientStatus("6\x1eJones\x1e\x1eX", tables);
  model.Load(tables);
  EXPECT_EQ(ShownRows(model), (std::vector<std::string>{"1PilotO", "2PilotO", "3PilotO", "5not toldO", "6JonesX",
                                                        "7PilotO", "8PilotO", "9PilotO"}));
  EXPECT_EQ(changed.count(), 2) << "of 5, which stood between, and of 6";
}

TEST(ClientsModel, ClientThatLeavesMovesNoOtherRow) {
  link::Tables tables;
  for (int id = 1; id <= 9; ++id) Add(tables, id);
  ClientsModel model;
  model.Load(tables);
  const ClientRow* last = &model.At(model.index(8));
  DelAWACSClient("1", tables);
  model.Load(tables);
  EXPECT_EQ(&model.At(model.index(7)), last);
  EXPECT_EQ(last->Id, 9);
}

TEST(ClientsModel, AnyComingAndGoingIsShown) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  link::Tables tables;
  ClientsModel model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
  for (int round = 0; round < 1000; ++round) {
    for (auto steps = random() % 6; steps > 0; --steps) {
      const int id = static_cast<int>(random() % 12);  // so few that some come twice
      const std::string name = "P" + std::to_string(random() % 5);
      switch (random() % 8) {
        case 0:
        case 1:
        case 2:
          Add(tables, id, name);
          break;
        case 3:
        case 4:
        case 5:
          DelAWACSClient(std::to_string(id), tables);
          break;
        case 6:
          UpdateClientStatus(std::to_string(id) + "\x1e" + name + "\x1e\x1eX", tables);
          break;
        default:
          if (random() % 20 == 0) tables.Clear();
      }
    }
    model.Load(tables);
    ASSERT_EQ(ShownRows(model), Expected(tables)) << "round " << round;
  }
}

}  // namespace
}  // namespace kestrel::shell
