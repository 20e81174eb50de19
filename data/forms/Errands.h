#pragma once
#include <chrono>
#include <functional>
#include <memory>

class QObject;

// Work done for a receiver in threads of their own, so that nothing slow holds its windows up. Only the errand sent
// last is wanted: what an earlier one still has to tell is not heard. User-interface thread, but for what an Errand
// offers.
class Errands {
  struct Shared;

 public:
  // What a piece of work sees of it, in its own thread.
  class Errand {
   public:
    // Whether anybody still waits for what it has to tell.
    bool IsWanted() const;
    // To be done in the receiver's thread, if the errand is still wanted by then.
    void Tell(std::function<void()> news) const;

   private:
    friend class Errands;
    Errand(std::shared_ptr<Shared> shared, int number) : shared_(std::move(shared)), number_(number) {}

    std::shared_ptr<Shared> shared_;
    int number_;
  };
  // Touches no window, owns what it uses and throws nothing.
  using Work = std::function<void(const Errand&)>;

  // The receiver must outlive it.
  explicit Errands(QObject* receiver);
  // Waits a moment for what still runs, but not for what hangs.
  ~Errands();
  Errands(const Errands&) = delete;
  Errands& operator=(const Errands&) = delete;

  void Send(Work work);
  void CallOff();
  // Waits at most that long for errands to end, and then has done what they told.
  void GiveTime(std::chrono::milliseconds patience);

 private:
  bool WaitForAll(std::chrono::milliseconds patience);

  std::shared_ptr<Shared> shared_;
};
