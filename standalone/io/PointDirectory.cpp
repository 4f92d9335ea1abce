#include "PointDirectory.h"

#include <algorithm>
#include <numeric>

#include "comm/Messages.h"

namespace weldline {
namespace {

std::size_t homeOf(Vec3 place, int ranks) {
    return placeKey(place) % static_cast<std::uint64_t>(ranks);
}

}  // namespace

PointDirectory::PointDirectory(Ranks& ranks, const std::vector<Vec3>& points,
                               const std::vector<bool>& used)
    : m_ranks(ranks),
      m_points(points),
      m_numbers(points.size(), -1),
      m_belongs(points.size(), true) {
    if (ranks.size() == 1) {
        std::iota(m_numbers.begin(), m_numbers.end(), 0);
        m_total = static_cast<std::int64_t>(points.size());
        return;
    }
    const Sent sent = firstsByRank();
    const std::vector<bool> own = askWhichAreOwn(sent);
    numberOwn(own);
    shareNumbers(sent, own, used);
}

PointDirectory::Sent PointDirectory::firstsByRank() const {
    const PointIndex index(m_points);
    Sent sent(static_cast<std::size_t>(m_ranks.size()));
    for (std::size_t p = 0; p < m_points.size(); ++p) {
        if (index.find(m_points[p]) == static_cast<int>(p)) {
            sent[homeOf(m_points[p], m_ranks.size())].push_back(p);
        }
    }
    return sent;
}

// Per point whether it appears here first: points that stay apart do, and those whose place no
// lower rank has.
std::vector<bool> PointDirectory::askWhichAreOwn(const Sent& sent) {
    std::vector<std::vector<Vec3>> places(sent.size());
    for (std::size_t r = 0; r < sent.size(); ++r) {
        for (const std::size_t p : sent[r]) {
            places[r].push_back(m_points[p]);
        }
    }
    std::vector<std::vector<char>> answers;
    for (const std::vector<Vec3>& told : exchangeValues(m_ranks, places)) {
        m_places.insert(m_places.end(), told.begin(), told.end());
        answers.emplace_back(told.size());
    }
    m_index.emplace(m_places);
    m_placeNumbers.assign(m_places.size(), -1);
    int entry = 0;
    for (std::vector<char>& answer : answers) {
        for (char& isFirst : answer) {
            isFirst = m_index->find(m_places[static_cast<std::size_t>(entry)]) == entry ? 1 : 0;
            ++entry;
        }
    }
    answers = exchangeValues(m_ranks, answers);
    std::vector<bool> own(m_points.size(), true);
    for (std::size_t r = 0; r < sent.size(); ++r) {
        for (std::size_t i = 0; i < sent[r].size(); ++i) {
            own[sent[r][i]] = answers[r][i] != 0;
        }
    }
    return own;
}

void PointDirectory::numberOwn(const std::vector<bool>& own) {
    const auto count = static_cast<std::int64_t>(std::count(own.begin(), own.end(), true));
    m_total = m_ranks.sum(count);
    std::int64_t next = sumBefore(m_ranks, count);
    for (std::size_t p = 0; p < own.size(); ++p) {
        m_numbers[p] = own[p] ? next++ : -1;
    }
}

// Tells the number, or -1, and whether a cell uses the point; is answered the number, and whether a
// cell of another rank uses it.
void PointDirectory::shareNumbers(const Sent& sent, const std::vector<bool>& own,
                                  const std::vector<bool>& used) {
    std::vector<std::vector<std::int64_t>> messages(sent.size());
    for (std::size_t r = 0; r < sent.size(); ++r) {
        for (const std::size_t p : sent[r]) {
            messages[r].insert(messages[r].end(), {m_numbers[p], used[p] ? 1 : 0});
        }
    }
    messages = exchangeValues(m_ranks, messages);
    std::vector<std::int64_t> users(m_places.size(), 0);
    std::vector<std::size_t> firsts;
    for (const std::vector<std::int64_t>& told : messages) {
        for (std::size_t i = 0; i < told.size(); i += 2) {
            const Vec3 place = m_places[firsts.size()];
            firsts.push_back(static_cast<std::size_t>(m_index->find(place)));
            m_placeNumbers[firsts.back()] = std::max(m_placeNumbers[firsts.back()], told[i]);
            users[firsts.back()] += told[i + 1];
        }
    }
    auto first = firsts.begin();
    for (std::vector<std::int64_t>& told : messages) {
        for (std::size_t i = 0; i < told.size(); i += 2, ++first) {
            told[i] = m_placeNumbers[*first];
            told[i + 1] = users[*first] > told[i + 1] ? 1 : 0;
        }
    }
    messages = exchangeValues(m_ranks, messages);
    for (std::size_t r = 0; r < sent.size(); ++r) {
        for (std::size_t i = 0; i < sent[r].size(); ++i) {
            const std::size_t p = sent[r][i];
            m_numbers[p] = messages[r][2 * i];
            m_belongs[p] = used[p] || (own[p] && messages[r][2 * i + 1] == 0);
        }
    }
}

std::vector<std::int64_t> PointDirectory::find(const std::vector<Vec3>& places) const {
    std::vector<std::int64_t> numbers(places.size(), -1);
    if (m_ranks.size() == 1) {
        const PointIndex index(m_points);
        std::transform(places.begin(), places.end(), numbers.begin(),
                       [&](Vec3 place) { return index.find(place); });
        return numbers;
    }
    Sent sent(static_cast<std::size_t>(m_ranks.size()));
    std::vector<std::vector<Vec3>> questions(sent.size());
    for (std::size_t p = 0; p < places.size(); ++p) {
        const std::size_t home = homeOf(places[p], m_ranks.size());
        sent[home].push_back(p);
        questions[home].push_back(places[p]);
    }
    std::vector<std::vector<std::int64_t>> answers;
    for (const std::vector<Vec3>& asked : exchangeValues(m_ranks, questions)) {
        std::vector<std::int64_t>& answer = answers.emplace_back();
        for (const Vec3 place : asked) {
            const int entry = m_index->find(place);
            answer.push_back(entry < 0 ? -1 : m_placeNumbers[static_cast<std::size_t>(entry)]);
        }
    }
    answers = exchangeValues(m_ranks, answers);
    for (std::size_t r = 0; r < sent.size(); ++r) {
        for (std::size_t i = 0; i < sent[r].size(); ++i) {
            numbers[sent[r][i]] = answers[r][i];
        }
    }
    return numbers;
}

}  // namespace weldline
